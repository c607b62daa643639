#include "RichTextReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <array>
#include <string>
#include <vector>

#include "RichTextDocument.h"

namespace genvara {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// Runs of a paragraph, one behind the other.
std::string TextOf(const RichParagraph& paragraph) {
    std::string text;
    for (const RichRun& run : paragraph.runs) {
        text += run.text;
    }
    return text;
}

std::vector<std::string> Texts(const RichDocument& document) {
    std::vector<std::string> texts;
    for (const RichParagraph& paragraph : document.paragraphs) {
        texts.push_back(TextOf(paragraph));
    }
    return texts;
}

std::vector<std::string> TextsOf(const std::string& body) {
    return Texts(ReadRichText("{\\rtf1" + body + "}"));
}

struct BodyCase {
    std::string name;
    std::string body;
    std::vector<std::string> paragraphs;
};

/// The case's name in messages and in the list of tests.
void PrintTo(const BodyCase& body, std::ostream* out) {
    *out << body.name;
}

class RichTextBody : public testing::TestWithParam<BodyCase> {};

TEST_P(RichTextBody, HasItsParagraphs) {
    EXPECT_EQ(TextsOf(GetParam().body), GetParam().paragraphs);
}

INSTANTIATE_TEST_SUITE_P(
    Reader, RichTextBody,
    testing::Values(
        BodyCase{"Nothing", "", {}},  //
        BodyCase{"ALineWithoutItsEnd", " a", {"a"}}, BodyCase{"ALine", " a\\par", {"a"}},
        BodyCase{"EmptyLines", "\\par\\par", {"", ""}},
        BodyCase{"LineEndsOfTheFileAreNone", " a\r\nb\\par\r\n", {"ab"}},
        BodyCase{"OneBlankEndsAWord", "\\b  a \\b0 b", {" a b"}},
        BodyCase{"TabAndBreak", " a\\tab b\\line c", {"a\tb\nc"}}, BodyCase{"ATabByte", " a\tb", {"a\tb"}},
        BodyCase{"EscapedSigns", " \\\\\\{\\}", {"\\{}"}},
        BodyCase{"CodePage", " caf\\'e9 \\'80 \x96", {"caf\u00E9 \u20AC \u2013"}},
        BodyCase{"ANumber", "\\u8486?", {"\u2126"}},
        BodyCase{"ANegativeNumber", "\\u-10179?\\u-8448?", {"\U0001F700"}},
        BodyCase{"NoFallback", "\\uc0\\u8486 x", {"\u2126x"}},
        BodyCase{"TwoFallbacks", "\\uc2\\u8486 \\'3f?x", {"\u2126x"}},
        BodyCase{"AFallbackEndsWithItsGroup", "{\\u8486}x", {"\u2126x"}},
        BodyCase{"HalvesOfCharacters", "\\u-10179?x\\u-8448?", {"\uFFFDx\uFFFD"}},
        BodyCase{
            "NamedCharacters", "\\ldblquote a\\rdblquote\\endash\\~\\_", {"\u201Ca\u201D\u2013\u00A0\u2011"}},
        BodyCase{"UnknownWords", "\\frobnicate7 a\\zz-3 b", {"ab"}},
        BodyCase{"UnknownSigns", " a\\:b\\|c", {"abc"}},
        BodyCase{"MarkedDestination", "{\\*\\generator Some {nested} words;}a", {"a"}},
        BodyCase{"KnownDestinations", "{\\info{\\title x}}{\\stylesheet{\\s1 y;}}{\\pict 00ff}a", {"a"}},
        BodyCase{"NoParagraphsInDestinations", "{\\header x\\par}a\\par", {"a"}},
        BodyCase{"Binary", "\\bin4 }}\\\\a", {"a"}},
        BodyCase{"BinaryBeyondTheEnd", " a\\bin99999999 b", {"a"}},
        BodyCase{"HexThatIsNone", " \\'zz", {"zz"}},
        BodyCase{"FigureThatIsTooLong", "\\fs99999999999999999999 a", {"a"}},
        BodyCase{"ABackslashAtALineEnd", " a\\\nb", {"a", "b"}}),
    [](const testing::TestParamInfo<BodyCase>& tested) { return tested.param.name; });

TEST(RichTextReader, TakesNothingForNothing) {
    EXPECT_THAT(ReadRichText("").paragraphs, IsEmpty());
}

TEST(RichTextReader, TakesOtherBytesForPlainText) {
    EXPECT_THAT(Texts(ReadRichText("a\tb\r\n\r\n{\\caf\xE9")), ElementsAre("a\tb", "", "{\\caf\u00E9"));
}

TEST(RichTextReader, EndsWithTheOutermostGroup) {
    EXPECT_THAT(Texts(ReadRichText(std::string("{\\rtf1 a\\par}b\\par\0{", 19))), ElementsAre("a"));
}

TEST(RichTextReader, KeepsTheFormatOfALastLineWithoutEnd) {
    const RichDocument document = ReadRichText("{\\rtf1\\qc\\tx500 a}");
    ASSERT_THAT(document.paragraphs, SizeIs(1));
    EXPECT_EQ(document.paragraphs[0].alignment, RichAlignment::kCentre);
    EXPECT_THAT(document.paragraphs[0].stops, ElementsAre(RichTabStop{RichTabKind::kLeft, 500}));
}

TEST(RichTextReader, TakesFormatsIntoGroupsAndOutAgain) {
    const RichDocument document = ReadRichText(
        "{\\rtf1{\\fonttbl{\\f0 Arial;}{\\f1\\froman Times New Roman;}}\\f1\\fs20 a{\\b\\f0 b}c\\par}");
    ASSERT_THAT(document.paragraphs, SizeIs(1));
    const std::vector<RichRun>& runs = document.paragraphs[0].runs;
    ASSERT_THAT(runs, SizeIs(3));
    EXPECT_EQ(runs[0].format, (RichFormat{.face = "Times New Roman", .halfPoints = 20}));
    EXPECT_EQ(runs[1].format, (RichFormat{.face = "Arial", .halfPoints = 20, .bold = true}));
    EXPECT_EQ(runs[2].format, runs[0].format);
    EXPECT_EQ(document.paragraphs[0].mark, runs[0].format);
}

TEST(RichTextReader, ReadsTheFontTableWithoutInnerGroups) {
    const RichDocument document = ReadRichText("{\\rtf1\\deff4{\\fonttbl\\f0 One;\\f4 Four;}a\\f0 b}");
    ASSERT_THAT(document.paragraphs, SizeIs(1));
    ASSERT_THAT(document.paragraphs[0].runs, SizeIs(2));
    EXPECT_EQ(document.paragraphs[0].runs[0].format.face, "Four");
    EXPECT_EQ(document.paragraphs[0].runs[1].format.face, "One");
}

TEST(RichTextReader, KeepsStopsInOrderAndClearsThem) {
    const RichDocument document = ReadRichText(
        "{\\rtf1\\tqdec\\tx3000\\tqr\\tx1000\\tx2000\\tqc\\tx2000\\tx0\\tx-5\\tx99999 a\\par\\pard b\\par}");
    ASSERT_THAT(document.paragraphs, SizeIs(2));
    EXPECT_THAT(document.paragraphs[0].stops,
                ElementsAre(RichTabStop{RichTabKind::kRight, 1000}, RichTabStop{RichTabKind::kCentre, 2000},
                            RichTabStop{RichTabKind::kDecimal, 3000}));
    EXPECT_THAT(document.paragraphs[1].stops, IsEmpty());
}

TEST(RichTextReader, ReadsWhatStaysTogether) {
    const RichDocument document = ReadRichText(
        "{\\rtf1 a\\par\\keepn b\\par\\keep c\\par\\pard\\keep d\\par{\\pard\\keepn e\\par}f\\par}");
    const std::vector<std::pair<bool, bool>> expected{{false, false}, {true, false}, {true, true},
                                                      {false, true},  {true, false}, {false, true}};
    std::vector<std::pair<bool, bool>> found;
    for (const RichParagraph& paragraph : document.paragraphs) {
        found.emplace_back(paragraph.isWithNext, paragraph.isOnePiece);
    }
    EXPECT_EQ(found, expected);
}

TEST(RichTextReader, ReadsPageTabAndSpacing) {
    const RichDocument document = ReadRichText(
        "{\\rtf1\\paperw11906\\paperh16838\\margl1000\\margr900\\margt800\\margb700\\deftab900\\expndtw2 a}");
    EXPECT_EQ(document.page, (RichPage{11906, 16838, 1000, 900, 800, 700}));
    EXPECT_EQ(document.defaultTab, 900);
    EXPECT_EQ(document.paragraphs.at(0).runs.at(0).format.spacing, 2);
}

TEST(RichTextReader, RefusesPagesWithoutRoom) {
    const RichPage page = ReadRichText("{\\rtf1\\paperw5\\paperh-7\\margl20000\\margt31680\\deftab0 a}").page;
    EXPECT_EQ(page, (RichPage{.width = 1440, .height = 15840, .left = 0, .right = 0, .top = 0, .bottom = 0}));
    EXPECT_EQ(ReadRichText("{\\rtf1\\deftab0 a}").defaultTab, 720);
}

TEST(RichTextReader, HoldsSizesInBounds) {
    for (const auto& [word, halfPoints] :
         {std::pair{"\\fs0", 24}, {"\\fs-4", 24}, {"\\fs1", 2}, {"\\fs9999", 576}}) {
        EXPECT_EQ(
            ReadRichText(std::string("{\\rtf1") + word + " a}").paragraphs.at(0).runs.at(0).format.halfPoints,
            halfPoints)
            << word;
    }
}

TEST(RichTextReader, SurvivesGroupsOfAnyDepth) {
    constexpr std::size_t kDepth = 1'000'000;
    EXPECT_THAT(Texts(ReadRichText("{\\rtf1\\tx500 " + std::string(kDepth, '{') + "a" +
                                   std::string(kDepth, '}') + "b}")),
                ElementsAre("ab"));
    EXPECT_THAT(Texts(ReadRichText("{\\rtf1 " + std::string(kDepth, '{') + "a")), ElementsAre("a"));
    EXPECT_THAT(Texts(ReadRichText("{\\rtf1 a" + std::string(kDepth, '}'))), ElementsAre("a"));
}

TEST(RichTextReader, BoundsFaceAndStops) {
    std::string stops;
    for (int position = 1; position <= 1000; ++position) {
        stops += "\\tx" + std::to_string(position);
    }
    const RichDocument document =
        ReadRichText("{\\rtf1{\\fonttbl{\\f0 " + std::string(100'000, 'x') + ";}}" + stops + " a}");
    EXPECT_LE(document.paragraphs.at(0).stops.size(), 64U);
    EXPECT_LE(document.paragraphs.at(0).runs.at(0).format.face.size(), 100U);
}

/// A report of our own: what its writer was given comes back.
TEST(RichTextReader, ReadsWhatTheGeneratorWrites) {
    using namespace rich_text;
    const std::int32_t handle = RcgNewDoc();
    RcgInitSect(handle);
    RcgBeginSectText(handle);
    RcgParaFlags(handle, kCentred);
    RcgTextFont(handle, "Arial", 20, kBold | kItalic, kOn);
    RcgInsertText(handle, "T\u00EFtle \U0001F700 {\\}\r\n");
    RcgResetParaProp(handle);
    RcgParaTabStop(handle, kRightTab, 2966, kNoLeader);
    RcgParaTabStop(handle, kDecimalTab, 6307, kNoLeader);
    RcgTextFont(handle, "Times New Roman", 12, kItalic, kOff);
    RcgInsertText(handle, "a\tb\r\n\r\n");
    std::int32_t length = 0;
    const std::int32_t data = RcgGetData(handle, length);
    std::string bytes(static_cast<std::size_t>(length), ' ');
    RcgHandleToStr(bytes, length, data);
    RcgEndDoc(handle);

    const RichDocument document = ReadRichText(bytes);
    EXPECT_THAT(Texts(document), ElementsAre("T\u00EFtle \U0001F700 {\\}", "a\tb", ""));
    EXPECT_EQ(document.page, (RichPage{12240, 15840, 1080, 1080, 720, 720}));
    EXPECT_EQ(document.defaultTab, 900);
    EXPECT_EQ(document.paragraphs[0].alignment, RichAlignment::kCentre);
    EXPECT_EQ(document.paragraphs[0].runs.at(0).format,
              (RichFormat{.face = "Arial", .halfPoints = 40, .bold = true, .italic = true, .spacing = 2}));
    EXPECT_EQ(document.paragraphs[2].mark,
              (RichFormat{.face = "Times New Roman", .halfPoints = 24, .bold = true, .spacing = 2}));
    EXPECT_THAT(document.paragraphs[1].stops, ElementsAre(RichTabStop{RichTabKind::kRight, 2966},
                                                          RichTabStop{RichTabKind::kDecimal, 6307}));
}

/// Pieces that damaged rich text is made of.
constexpr std::array<std::string_view, 28> kPieces{
    "{",        "}",         "\\",           "\\*",       "\\'",     "\\'e9",     "\\u-10179",
    "\\u8364?", "\\uc0",     "\\uc9",        "\\bin3",    "\\par",   "\\tab ",    "\\line",
    "\\tx700",  "\\tqr",     "\\tqdec",      "\\pard",    "\\plain", "\\fonttbl", "\\f1",
    "\\fs-1",   "\\paperw1", "\\margl31680", "\\deftab0", "text;",   "\r\n",      "\xFF\x01"};

/// What holds of any document: see the structures' comments.
void CheckPromises(const RichDocument& document) {
    RC_ASSERT(document.defaultTab > 0);
    RC_ASSERT(document.page.width - document.page.left - document.page.right >= 1440);
    RC_ASSERT(document.page.height - document.page.top - document.page.bottom >= 1440);
    for (const RichParagraph& paragraph : document.paragraphs) {
        std::int32_t last = 0;
        for (const RichTabStop& stop : paragraph.stops) {
            RC_ASSERT(stop.position > last);
            last = stop.position;
        }
        for (std::size_t i = 0; i < paragraph.runs.size(); ++i) {
            const bool isLikeTheLast = i > 0 && paragraph.runs[i].format == paragraph.runs[i - 1].format;
            RC_ASSERT(!paragraph.runs[i].text.empty());
            RC_ASSERT(!isLikeTheLast);
        }
    }
}

TEST(RichTextReader, TakesAnyBytes) {
    EXPECT_TRUE(rc::check([](const std::string& bytes) {
        CheckPromises(ReadRichText(bytes));
        CheckPromises(ReadRichText("{\\rtf1" + bytes));
    }));
    EXPECT_TRUE(rc::check([](const std::vector<std::uint8_t>& pieces) {
        std::string bytes = "{\\rtf1";
        for (const std::uint8_t piece : pieces) {
            bytes += kPieces.at(piece % kPieces.size());
        }
        CheckPromises(ReadRichText(bytes));
    }));
}

}  // namespace
}  // namespace genvara
