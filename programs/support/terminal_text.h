#pragma once

#include <ostream>
#include <streambuf>
#include <string>
#include <string_view>

namespace program_support {

/// `text` so that a terminal shows it and does nothing else. What it would obey or stumble over is
/// written as "\x1B" instead: control characters (C0 but tab and line feed, DEL, C1) and bytes that
/// are no UTF-8, except where the system's own texts are in another code page.
std::string terminalText(std::string_view text);

/// A JSON text with the same characters escaped as JSON does it; its strings read as before.
std::string terminalJson(std::string_view json);

/// An XML document with the same characters as references; its texts and attributes read as before.
std::string terminalXml(std::string_view xml);

/// Lets nothing but terminalText() through to a stream while it lives. A carriage return before a
/// line feed passes, and a character may come in pieces.
class TerminalStream : private std::streambuf {
  public:
    /// `stream` must outlive it.
    explicit TerminalStream(std::ostream& stream);
    ~TerminalStream() override;
    TerminalStream(const TerminalStream&) = delete;
    TerminalStream& operator=(const TerminalStream&) = delete;
    TerminalStream(TerminalStream&&) = delete;
    TerminalStream& operator=(TerminalStream&&) = delete;

  private:
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int_type overflow(int_type character) override;
    int sync() override;
    bool put(std::string_view text);

    std::ostream& stream_;
    std::streambuf* target_;
    std::string begun_; ///< The last character, as far as it has come.
};

} // namespace program_support
