#include "ReportFonts.h"

#include <QString>
#include <QStringList>
#include <algorithm>
#include <array>
#include <string_view>

namespace genvara {
namespace {

constexpr int kTwipsPerHalfPoint = 10;

struct FaceFamily {
    std::string_view face;
    QFont::StyleHint hint;
    std::array<const char*, 4> substitutes;
};

/// Families that were drawn to the same widths, letter by letter.
constexpr std::array<FaceFamily, 3> kFamilies{{
    {"Arial", QFont::SansSerif, {"Liberation Sans", "Arimo", "Nimbus Sans", "Helvetica"}},
    {"Times New Roman", QFont::Serif, {"Liberation Serif", "Tinos", "Nimbus Roman", "Times"}},
    {"Courier New", QFont::TypeWriter, {"Liberation Mono", "Cousine", "Nimbus Mono PS", "Courier"}},
}};

/// The face of a document that names none, as word processors have it.
constexpr std::string_view kDefaultFace = "Times New Roman";

}  // namespace

QFont ReportFont(const RichFormat& format) {
    const std::string_view face = format.face.empty() ? kDefaultFace : format.face;
    QStringList families{QString::fromUtf8(face.data(), static_cast<qsizetype>(face.size()))};
    QFont font;
    const auto* const found = std::ranges::find(kFamilies, face, &FaceFamily::face);
    if (found != kFamilies.end()) {
        families.append({found->substitutes.begin(), found->substitutes.end()});
        font.setStyleHint(found->hint);
    }
    font.setFamilies(families);
    font.setPixelSize(format.halfPoints * kTwipsPerHalfPoint);
    font.setBold(format.bold);
    font.setItalic(format.italic);
    // Letters come no closer than by a tenth of their size, so that none ends before it begins.
    font.setLetterSpacing(QFont::AbsoluteSpacing, std::max(format.spacing, -format.halfPoints));
    // Letters stay as they are drawn: hints would bend their widths to each screen's pixels.
    font.setHintingPreference(QFont::PreferNoHinting);
    // The format's default is no pair kerning, which would also draw two ones closer than other figures.
    font.setKerning(false);
    return font;
}

}  // namespace genvara
