#include "fmi_import/archive/zip_reader.h"

#include <algorithm>
#include <system_error>
#include <vector>
#include <zlib.h>

namespace fmi_import {

namespace {

constexpr std::size_t blockSize = std::size_t{64} * 1024;
constexpr std::uint64_t largestDirectory = std::uint64_t{64} << 20U;
constexpr std::uint64_t endRecordSize = 22;
constexpr std::uint64_t locatorSize = 20;
constexpr std::uint64_t zip64EndRecordSize = 56;
constexpr std::size_t entrySize = 46;
constexpr std::size_t headerSize = 30;
constexpr std::uint32_t inZip64 = 0xFFFFFFFFU;
constexpr std::uint16_t deflated = 8;

/// A little-endian number in a record; zero behind its end.
template <typename Number>
Number numberAt(std::string_view record, std::size_t at) {
    std::uint64_t number = 0;
    for (std::size_t byte = 0; byte < sizeof(Number) && at + byte < record.size(); ++byte) {
        number |= static_cast<std::uint64_t>(static_cast<unsigned char>(record[at + byte]))
                  << (8 * byte);
    }
    return static_cast<Number>(number);
}

std::uint16_t word(std::string_view record, std::size_t at) {
    return numberAt<std::uint16_t>(record, at);
}

std::uint32_t doubleWord(std::string_view record, std::size_t at) {
    return numberAt<std::uint32_t>(record, at);
}

std::uint64_t quadWord(std::string_view record, std::size_t at) {
    return numberAt<std::uint64_t>(record, at);
}

/// The content of the Zip64 field among an entry's extra fields; empty when there is none.
std::string_view zip64Field(std::string_view extra) {
    while (extra.size() >= 4) {
        const std::string_view content = extra.substr(4, word(extra, 2));
        if (word(extra, 0) == 1) {
            return content;
        }
        extra.remove_prefix(4 + content.size());
    }
    return {};
}

/// Puts the numbers that did not fit the entry's record in place; false when they are missing.
bool takeZip64(ZipEntry& entry, std::string_view field) {
    for (std::uint64_t* number : {&entry.size, &entry.packedSize, &entry.position}) {
        if (*number != inZip64) {
            continue;
        }
        if (field.size() < 8) {
            return false;
        }
        *number = quadWord(field, 0);
        field.remove_prefix(8);
    }
    return true;
}

/// Inflates raw deflate data.
class Inflater {
  public:
    Inflater() { isReady_ = inflateInit2(&stream_, -MAX_WBITS) == Z_OK; }

    ~Inflater() { inflateEnd(&stream_); }

    Inflater(const Inflater&) = delete;
    Inflater& operator=(const Inflater&) = delete;
    Inflater(Inflater&&) = delete;
    Inflater& operator=(Inflater&&) = delete;

    void feed(std::string_view packed) {
        stream_.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
        stream_.avail_in = static_cast<uInt>(packed.size());
    }

    /// The next piece; empty when more must be fed, at the end, and where the data is damaged.
    std::string_view next() {
        if (!isReady_ || isAtEnd_) {
            return {};
        }
        stream_.next_out = reinterpret_cast<Bytef*>(block_.data());
        stream_.avail_out = static_cast<uInt>(block_.size());
        const int status = inflate(&stream_, Z_NO_FLUSH);
        isAtEnd_ = status == Z_STREAM_END;
        isReady_ = status == Z_OK || status == Z_BUF_ERROR || isAtEnd_;
        return {block_.data(), block_.size() - stream_.avail_out};
    }

    /// True when the data ended where it says itself that it ends, and no byte is left over.
    [[nodiscard]] bool isComplete() const { return isAtEnd_ && stream_.avail_in == 0; }

  private:
    z_stream stream_{};
    bool isReady_;
    bool isAtEnd_ = false;
    std::vector<char> block_ = std::vector<char>(blockSize);
};

/// Passes data on and keeps count of it.
class CheckedSink {
  public:
    CheckedSink(const ZipEntry& entry, const std::function<bool(std::string_view)>& sink)
        : entry_(entry),
          sink_(sink) {}

    /// False when nothing more is wanted, or more came than there may be.
    bool take(std::string_view piece) {
        size_ += piece.size();
        checksum_ = crc32(checksum_, reinterpret_cast<const Bytef*>(piece.data()),
                          static_cast<uInt>(piece.size()));
        return size_ <= entry_.size && (piece.empty() || sink_(piece));
    }

    [[nodiscard]] bool isIntact() const {
        return size_ == entry_.size && checksum_ == entry_.checksum;
    }

  private:
    const ZipEntry& entry_;
    const std::function<bool(std::string_view)>& sink_;
    std::uint64_t size_ = 0;
    uLong checksum_ = crc32(0, nullptr, 0);
};

bool inflateInto(CheckedSink& sink, Inflater& inflater, std::string_view packed) {
    inflater.feed(packed);
    for (auto piece = inflater.next(); !piece.empty(); piece = inflater.next()) {
        if (!sink.take(piece)) {
            return false;
        }
    }
    return true;
}

} // namespace

ZipReader::ZipReader(const std::filesystem::path& file) : file_(file, std::ios::binary) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(file, error);
    if (error || !file_) {
        return;
    }
    size_ = size;
    const auto found = findDirectory();
    if (!found || found->size > largestDirectory || found->offset > found->end ||
        found->size > found->end - found->offset) {
        return;
    }
    prefix_ = found->end - found->size - found->offset;
    directoryPosition_ = found->end - found->size;
    directory_ = bytesAt(directoryPosition_, found->size);
    isOpen_ = directory_.size() == found->size;
}

std::string ZipReader::bytesAt(std::uint64_t position, std::uint64_t count) {
    if (position > size_ || count > size_ - position) {
        return {};
    }
    std::string bytes(static_cast<std::size_t>(count), '\0');
    file_.clear();
    file_.seekg(static_cast<std::streamoff>(position));
    file_.read(bytes.data(), static_cast<std::streamsize>(count));
    return file_ ? bytes : std::string();
}

/// The directory is told by the record at the end of the file, before a comment.
std::optional<ZipReader::Directory> ZipReader::findDirectory() {
    using namespace std::string_view_literals;
    constexpr std::uint64_t longestComment = 0xFFFF;
    const std::uint64_t tail = std::min(size_, endRecordSize + longestComment);
    const std::string bytes = bytesAt(size_ - tail, tail);
    const std::size_t at = bytes.rfind("PK\5\6"sv);
    if (at == std::string::npos || bytes.size() - at < endRecordSize) {
        return std::nullopt;
    }
    const std::string_view record = std::string_view(bytes).substr(at);
    const std::uint64_t end = size_ - tail + at;
    if (auto found = findZip64Directory(end)) {
        return found;
    }
    const bool isOneFile = word(record, 4) == 0 && word(record, 6) == 0;
    return isOneFile ? std::optional(Directory{doubleWord(record, 12), doubleWord(record, 16), end})
                     : std::nullopt;
}

/// The record with 64-bit numbers that a locator before the one at `end` leads to, if any.
std::optional<ZipReader::Directory> ZipReader::findZip64Directory(std::uint64_t end) {
    using namespace std::string_view_literals;
    const std::string locator = end >= locatorSize ? bytesAt(end - locatorSize, locatorSize) : "";
    if (!locator.starts_with("PK\6\7"sv)) {
        return std::nullopt;
    }
    const std::uint64_t position = quadWord(locator, 8);
    const std::string record = bytesAt(position, zip64EndRecordSize);
    if (!record.starts_with("PK\6\6"sv)) {
        return std::nullopt;
    }
    return Directory{quadWord(record, 40), quadWord(record, 48), position};
}

std::optional<ZipEntry> ZipReader::next() {
    using namespace std::string_view_literals;
    const std::string_view record = std::string_view(directory_).substr(at_);
    const std::size_t nameSize = word(record, 28);
    const std::size_t extraSize = word(record, 30);
    const std::size_t recordSize = entrySize + nameSize + extraSize + word(record, 32);
    if (!record.starts_with("PK\1\2"sv) || record.size() < recordSize) {
        return std::nullopt;
    }
    ZipEntry entry{std::string(record.substr(entrySize, nameSize)),
                   word(record, 8),
                   word(record, 10),
                   doubleWord(record, 16),
                   doubleWord(record, 20),
                   doubleWord(record, 24),
                   doubleWord(record, 38),
                   doubleWord(record, 42)};
    if (!takeZip64(entry, zip64Field(record.substr(entrySize + nameSize, extraSize)))) {
        return std::nullopt;
    }
    at_ += recordSize;
    return entry;
}

std::optional<ZipHeader> ZipReader::header(const ZipEntry& entry) {
    using namespace std::string_view_literals;
    const std::uint64_t position = prefix_ + entry.position;
    const std::string header = position < prefix_ ? "" : bytesAt(position, headerSize);
    if (!header.starts_with("PK\3\4"sv) || word(header, 8) != entry.method) {
        return std::nullopt;
    }
    const std::uint16_t nameSize = word(header, 26);
    const std::uint64_t afterName = position + headerSize + nameSize;
    return ZipHeader{bytesAt(position + headerSize, nameSize), position,
                     afterName + word(header, 28)};
}

bool ZipReader::openData(const ZipEntry& entry) {
    const auto found = header(entry);
    if (!found || found->data > size_ || entry.packedSize > size_ - found->data) {
        return false;
    }
    file_.seekg(static_cast<std::streamoff>(found->data));
    return file_.good();
}

bool ZipReader::read(const ZipEntry& entry, const std::function<bool(std::string_view)>& sink) {
    Inflater inflater;
    CheckedSink checked(entry, sink);
    std::vector<char> block(blockSize);
    for (std::uint64_t left = entry.packedSize; left > 0;) {
        const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(left, blockSize));
        if (!file_.read(block.data(), static_cast<std::streamsize>(size))) {
            return false;
        }
        const std::string_view packed(block.data(), size);
        const bool goesOn = entry.method == deflated ? inflateInto(checked, inflater, packed)
                                                     : checked.take(packed);
        if (!goesOn) {
            return false;
        }
        left -= size;
    }
    return checked.isIntact() && (entry.method != deflated || inflater.isComplete());
}

} // namespace fmi_import
