// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/remarks.h"

#include "system/utf8.h"

namespace lumora {

std::vector<std::string> remarksOf(const Metadata& metadata)
{
    std::vector<std::string> remarks = metadata.jpegComments;
    remarks.insert(remarks.end(), metadata.gifComments.begin(), metadata.gifComments.end());
    for (const PngText& text : metadata.pngTexts) {
        if (text.keyword == remarkKeyword && !text.text.empty()) remarks.push_back(text.text);
    }
    return remarks;
}

std::string remarkAsUtf8(const std::string& remark)
{
    if (isUtf8(remark)) return remark;
    std::string text;
    for (const char c : remark)
        appendUtf8(text, static_cast<unsigned char>(c));
    return text;
}

} // namespace lumora
