#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "QuillboxCommon/views/Text.h"

namespace qb {

/// The text of RTF, with what an attributed string can hold of its looks: bold, italic, size from 1
/// to 400 points and colour. What is no text is left out: pictures, notes, heads and feet of pages.
/// Each paragraph or row of a table ends in "\n", each cell in "\t". None for what does not begin
/// as RTF, and for groups nested deeper than 500. Damage beyond that costs the text where it is;
/// the end may be missing. Any thread.
std::optional<AttributedString> attributedStringWithRTF(std::string_view rtf);

/// The text as RTF that every reader understands, in ASCII. Each of "\r", "\n" and "\r\n" ends a
/// paragraph, so that it comes back as "\n". Opacity is lost. Any thread.
std::string rtfFromAttributedString(const AttributedString& text);

/// The text of RTF in a container that holds pictures beside it, which are left out. Read as that:
/// - a header of "rtfd" and, as all numbers here in 32 bits with the lowest first, 0, 3 and the
/// count
///   of files, not over 1000; of each file the length of its name and the name; the sizes of all
///   files; their bytes, all in the same order. The text is the file "TXT.rtf";
/// - any other order after "rtfd": the first RTF in it;
/// - RTF by itself.
/// None where there is no RTF. Any thread.
std::optional<AttributedString> attributedStringWithRTFD(std::string_view rtfd);

/// The first of these forms, with one file. Any thread.
std::string rtfdFromAttributedString(const AttributedString& text);

}  // namespace qb
