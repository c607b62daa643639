#pragma once

#include <string>

namespace genvara {

/// A document on the reports' page, Letter with 10080 twips for the text: Arial is face 0, Times New Roman
/// face 1; text of 12 points, a default tab of 900 twips.
[[nodiscard]] inline std::string ReportText(const std::string& body) {
    return "{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1{\\fonttbl{\\f0\\fswiss Arial;}{\\f1\\froman Times New "
           "Roman;}}"
           "\\paperw12240\\paperh15840\\margl1080\\margr1080\\margt720\\margb720\\deftab900\\f1\\fs24 " +
           body + "}";
}

/// As many numbered lines.
[[nodiscard]] inline std::string NumberedLines(int count) {
    std::string lines;
    for (int i = 1; i <= count; ++i) {
        lines += "Line" + std::to_string(i) + "\\tab " + std::to_string(i) + ".50\\par\r\n";
    }
    return lines;
}

}  // namespace genvara
