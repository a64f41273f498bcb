/// XML documents: read to their end or refused as a parser that many use does it.
#include "fmi_import/model_description/xml_reader.h"
#include "fuzz/fuzz_support.h"

#include <algorithm>
#include <expat.h>
#include <memory>
#include <utility>

namespace {

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

/// Stops at what the reader refuses on purpose.
void refuse(void* parser, const XML_Char*, const XML_Char*, const XML_Char*, int) {
    XML_StopParser(static_cast<XML_Parser>(parser), XML_FALSE);
}

bool isAcceptedByExpat(const std::string& document) {
    const std::unique_ptr<XML_ParserStruct, FreeParser> parser(XML_ParserCreateNS(nullptr, '\n'));
    XML_UseParserAsHandlerArg(parser.get());
    XML_SetStartDoctypeDeclHandler(parser.get(), refuse);
    return XML_Parse(parser.get(), document.data(), static_cast<int>(document.size()), 1) ==
           XML_STATUS_OK;
}

bool isAcceptedHere(const std::string& document) {
    try {
        fmi_import::FileText bytes = fmi_import::makeText(document.size());
        std::ranges::copy(document, bytes.bytes.get());
        fmi_import::FileText text = fmi_import::asUtf8(std::move(bytes), true);
        fmi_import::XmlReader xml(text);
        const fmi_import::XmlElement root = xml.root();
        for (fmi_import::XmlElement element; xml.nextInside(root, element);) {
            for (const auto& [name, value] : element.attributes) {
                fuzz::require(std::strlen(name) + std::strlen(value) <= 3 * document.size(),
                              "what is read is in the document");
            }
        }
        xml.finish();
        return true;
    } catch (const fmi_import::XmlFault& fault) {
        fuzz::require(!fault.reason.empty() && fault.line > 0, "a fault has a reason and a place");
        return false;
    }
}

/// Which characters beyond ASCII a name may have depends on the edition of the standard.
bool isAscii(const std::string& document) {
    return std::ranges::all_of(document,
                               [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string document = fuzz::Bytes(data, size).takeRest();
    const bool isAccepted = isAcceptedHere(document);
    fuzz::require(!isAscii(document) || isAccepted == isAcceptedByExpat(document),
                  "both parsers say the same");
    return 0;
}
