#pragma once

#include "fmi_import/model_description/xml_document.h"

#include <string>
#include <string_view>

namespace fmi_import {

/// What is wrong with a document and where: thrown by what reads it.
struct XmlFault {
    std::string reason; ///< In a parser's usual words.
    std::size_t line;   ///< Counted from 1.
};

/// `text` in UTF-8, without a byte order mark: the encodings that every XML parser knows (UTF-8,
/// UTF-16, ISO-8859-1, US-ASCII) as told by the byte order mark and the XML declaration (XML 1.0
/// section 4.3.3).
///
/// @param isWhole  The text is not only the beginning of a document.
/// @throws XmlFault when the text is not in its encoding or that is unknown, and for a character
///         that no document may have.
FileText asUtf8(FileText text, bool isWhole);

/// Length of the XML declaration (section 2.8) at the front of `text`; 0 when there is none.
///
/// @throws XmlFault when it is not well-formed.
std::size_t declarationLength(std::string_view text);

} // namespace fmi_import
