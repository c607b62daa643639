#include "ResultHtml.h"

#include <fmt/format.h>

#include <string_view>
#include <vector>

#include "RejectionReasons.h"

namespace genvara::python {
namespace {

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char character : text) {
        switch (character) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += character;
        }
    }
    return escaped;
}

std::string RowOf(const ChosenSet& set, std::string_view reasons) {
    return fmt::format(
        "<tr><td>{}</td><td>{}</td><td>{:.1f}</td><td>{:.1f}</td><td>{:.1f}</td><td>{}</td><td>{:.1f}</"
        "td>{}</tr>\n",
        Escaped(set.ModelNum), Escaped(set.AltNum), set.NominalRating, set.DeratedRating, set.MaxStepVoltDip,
        set.FreqDipAvail ? fmt::format("{:.1f}", set.MaxStepFreqDip) : std::string("n/a"), set.MaxStepVTHD,
        reasons);
}

std::string Head(std::string_view title, std::string_view more) {
    return fmt::format(
        "<table><caption>{}</caption>\n<tr><th>Model</th><th>Alternator</th><th>Rating kW</th><th>Derated "
        "kW</th>"
        "<th>Volt dip %</th><th>Freq dip %</th><th>VTHD %</th>{}</tr>\n",
        title, more);
}

}  // namespace

std::string HtmlOf(const SizingResult& result) {
    std::string html = Head("Recommended sets, smallest first", "");
    for (const ChosenSet& set : result.Designer().ChosenSets()) {
        html += RowOf(set, "");
    }
    html += "</table>\n" + Head("Undersized sets, largest first", "<th>Reasons</th>");
    for (const RejectedSet& set : result.Designer().RejectedSets()) {
        std::string reasons;
        for (const auto& reason : RejectionTexts(set.RejectionReason)) {
            reasons += (reasons.empty() ? "" : "<br>") + Escaped(reason);
        }
        html += RowOf(set, fmt::format("<td>{}</td>", reasons));
    }
    return html + "</table>\n";
}

}  // namespace genvara::python
