#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <thread>
#include <vector>

#include "AllDocuments.h"
#include "AnyText.h"
#include "RichTextDocument.h"
#include "RichTextReader.h"

namespace genvara {
namespace {

using namespace rich_text;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

std::string Finish(std::int32_t document) {
    std::int32_t length = 0;
    const std::int32_t data = RcgGetData(document, length);
    std::string buffer(static_cast<std::size_t>(length), ' ');
    RcgHandleToStr(buffer, length, data);
    RcgEndDoc(document);
    return buffer;
}

std::int32_t Begin() {
    const std::int32_t document = RcgNewDoc();
    RcgSetFlags(document, -1, 1);
    RcgInitSect(document);
    RcgBeginSectText(document);
    return document;
}

/// What a text alone becomes.
std::string Body(const std::string& text) {
    const std::int32_t document = Begin();
    RcgInsertText(document, text);
    const std::string rich = Finish(document);
    const std::size_t begin = rich.find("\\sectd") + 6;
    return rich.substr(begin, rich.size() - begin - 1);
}

TEST(RichText, IsAGroupWithItsTwoFaces) {
    const std::string rich = Finish(Begin());
    EXPECT_THAT(rich, StartsWith("{\\rtf1\\ansi"));
    EXPECT_THAT(
        rich,
        HasSubstr("{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}{\\f1\\froman\\fcharset0 Times New Roman;}}"));
    EXPECT_THAT(rich, EndsWith("\\sectd}"));
}

TEST(RichText, EscapesAndEndsParagraphs) {
    EXPECT_EQ(Body("a"), " a");
    EXPECT_EQ(Body(""), "");
    EXPECT_EQ(Body("\r\n"), "\\par\r\n");
    EXPECT_EQ(Body("a\tb\r\nc"), " a\\tab b\\par\r\nc");
    EXPECT_EQ(Body("{a}\\"), "\\{a\\}\\\\");
    EXPECT_EQ(Body("é€"), "\\'e9\\'80");
    EXPECT_EQ(Body("語"), "\\u-30050?");                         // 0x8A9E - 0x10000
    EXPECT_EQ(Body("\xF0\x9F\x98\x80"), "\\u-10179?\\u-8704?");  // D83D DE00
    EXPECT_EQ(Body("a\nb\rc"), " a\\line b\\line c");
}

TEST(RichText, StatesItsPage) {
    // Left to itself each reader takes a page of its own, and the usual one is too narrow for the rules.
    const std::string rich = Finish(Begin());
    EXPECT_THAT(rich, HasSubstr("\\paperw12240\\paperh15840\\margl1080\\margr1080\\margt720\\margb720"));
}

TEST(RichText, NothingFollowsTheClosingBrace) {
    const std::int32_t document = Begin();
    RcgInsertText(document, "x");
    std::int32_t length = 0;
    EXPECT_EQ(RcgGetData(document, length), document);
    const std::int32_t closed = length;
    RcgTextFont(document, "Arial", 20, kBold | kItalic, kOn);
    RcgParaFlags(document, kCentred);
    RcgParaTabStop(document, kLeftTab, 907, kNoLeader);
    RcgResetParaProp(document);
    RcgInitSect(document);
    RcgBeginSectText(document);
    RcgInsertText(document, "y");
    EXPECT_EQ(RcgGetData(document, length), document);
    EXPECT_EQ(length, closed);
    EXPECT_THAT(Finish(document), EndsWith("\\sectd x}"));
}

TEST(RichText, NeverCopiesMoreThanTheBufferHolds) {
    const std::int32_t document = Begin();
    std::int32_t length = 0;
    const std::int32_t data = RcgGetData(document, length);
    std::string buffer(5, ' ');
    EXPECT_EQ(RcgHandleToStr(buffer, length, data), 1);
    EXPECT_EQ(buffer, "{\\rtf");
    buffer = "     ";
    EXPECT_EQ(RcgHandleToStr(buffer, 2, data), 1);
    EXPECT_EQ(buffer, "{\\   ");
    EXPECT_EQ(RcgHandleToStr(buffer, -1, data), 1);
    EXPECT_EQ(RcgHandleToStr(buffer, length, 0), 0);
    EXPECT_EQ(buffer, "{\\   ");
    RcgEndDoc(document);
}

TEST(RichText, HasNoHandleLeftWhenThousandsAreAlive) {
    const std::size_t before = LiveRichTextDocuments();
    {
        const AllDocuments taken;
        EXPECT_GE(taken.Count(), 1000U);
        EXPECT_EQ(RcgNewDoc(), 0);
        EXPECT_EQ(RcgInsertText(0, "x"), 0);
    }
    EXPECT_EQ(LiveRichTextDocuments(), before);
    const std::int32_t document = RcgNewDoc();
    EXPECT_NE(document, 0);
    EXPECT_EQ(RcgEndDoc(document), 1);
}

TEST(RichText, KeepsTheTextStateAndClearsTheParagraphState) {
    const std::int32_t document = Begin();
    RcgParaFlags(document, kCentred);
    RcgTextFont(document, "Arial", 20, kBold | kItalic, kOn);
    RcgInsertText(document, "T\r\n");
    RcgParaFlags(document, kLeftAligned);
    RcgParaTabStop(document, kLeftTab, 907, kNoLeader);
    RcgParaTabStop(document, kRightTab, 1627, kNoLeader);
    RcgParaTabStop(document, kDecimalTab, 2520, kNoLeader);
    RcgTextFont(document, "Times New Roman", 12, kBold, kOn);
    RcgTextFont(document, "", 0, kBold, kOff);
    RcgInsertText(document, "x\r\n");
    RcgResetParaProp(document);
    RcgTextFont(document, "", 0, kItalic, kOff);
    RcgTextFont(document, "", 0, 0, kOn);
    RcgInsertText(document, "y");
    EXPECT_THAT(
        Finish(document),
        EndsWith("\\sectd\\qc\\keepn\\f0\\fs40\\b\\i T\\par\r\n\\ql\\tx907\\tqr\\tx1627\\tqdec\\tx2520"
                 "\\pard\\keep\\ql\\tx907\\tqr\\tx1627\\tqdec\\tx2520\\f1\\fs24\\b0 x\\par\r\n"
                 "\\pard\\keep\\i0 y}"));
}

/// A table of steps as reports have it.
class RichTextPages : public testing::Test {
  protected:
    static std::int32_t NewTable() {
        const std::int32_t document = Begin();
        RcgTextFont(document, "Times New Roman", 10, kBold, kOff);
        return document;
    }
    void Bold(const std::string& text) {
        RcgTextFont(m_document, "", 0, kBold, kOn);
        RcgInsertText(m_document, text);
        RcgTextFont(m_document, "", 0, kBold, kOff);
    }
    void Plain(const std::string& text) { RcgInsertText(m_document, text); }
    void Heading(const std::string& text) {
        RcgTextFont(m_document, "Arial", 14, kBold | kItalic, kOn);
        Plain(text + "\r\n\r\n");
        RcgTextFont(m_document, "Times New Roman", 10, kBold | kItalic, kOff);
    }
    /// 2 lines for each load and 4 more, with a gap behind them.
    void Step(int loads) {
        Bold("Step\r\n");
        for (int i = 0; i < loads; ++i) {
            Plain("   Load\r\n\t1\t2.00\r\n");
        }
        Plain("____\r\nStep Totals\t2.00\r\nCum. Totals\t2.00\r\n\r\n");
    }

    /// The lines, those that stay with the next one marked by a plus.
    [[nodiscard]] std::string Lines() {
        const std::string rich = Finish(m_document);
        std::string lines;
        bool isKept = false;
        for (std::size_t from = rich.find("\\sectd") + 6;
             rich.find("\\par\r\n", from) != std::string::npos;) {
            const std::size_t to = rich.find("\\par\r\n", from);
            const std::string line = rich.substr(from, to - from);
            isKept = line.rfind("\\keepn") != std::string::npos ||
                     (isKept && line.find("\\pard") == std::string::npos);
            lines += ShownText("}}" + line) + (isKept ? "+|" : "|");
            from = to + 6;
        }
        return lines;
    }

    std::int32_t m_document = NewTable();
};

TEST_F(RichTextPages, KeepRuleAndHeadingWithWhatFollowsThem) {
    Plain("Before\r\n");
    Bold("____\r\n");
    Heading("Heading");
    Bold("Label\t");
    Plain("value\r\n\r\n");
    Bold("Second\t");
    Plain("value\r\n");
    Bold("____\r\n");
    Heading("Next");
    Plain("text\r\n");
    EXPECT_EQ(Lines(), "Before|____+|Heading+|+|Label\tvalue+|+|Second\tvalue|____+|Next+|+|text|");
}

TEST_F(RichTextPages, KeepEachStepInOnePieceWithItsTotals) {
    Step(1);
    Step(2);
    Plain("____\r\nGrand Totals\r\n\r\n\r\n*Note\r\n");
    EXPECT_EQ(Lines(),
              "Step+|   Load+|\t1\t2.00+|____+|Step Totals\t2.00+|Cum. Totals\t2.00||"
              "Step+|   Load+|\t1\t2.00+|   Load+|\t1\t2.00+|____+|Step Totals\t2.00+|Cum. Totals\t2.00||"
              "____+|Grand Totals+|+|+|*Note|");
}

TEST_F(RichTextPages, MayEndBehindALoadOfALongStep) {
    // 36 paragraphs are kept: 2 a load, the heading, 3 of totals and the gap; so 15 loads are, and 16 are
    // not.
    Step(15);
    std::string step = "Step+|";
    for (int i = 0; i < 15; ++i) {
        step += "   Load+|\t1\t2.00+|";
    }
    EXPECT_EQ(Lines(), step + "____+|Step Totals\t2.00+|Cum. Totals\t2.00||");
    m_document = NewTable();
    Step(16);
    step = "Step+|";
    for (int i = 1; i < 16; ++i) {
        step += "   Load+|\t1\t2.00|";
    }
    EXPECT_EQ(Lines(), step + "   Load+|\t1\t2.00+|____+|Step Totals\t2.00+|Cum. Totals\t2.00||");
}

TEST_F(RichTextPages, KeepATorqueWithItsMotorInALongStep) {
    Bold("Step\r\n");
    for (int i = 0; i < 40; ++i) {
        Plain("   Pump\r\n   Torque\r\n\t1\r\n");
    }
    const std::string lines = Lines();
    EXPECT_TRUE(lines.starts_with("Step+|   Pump+|   Torque+|\t1|   Pump+|   Torque+|\t1|")) << lines;
}

TEST_F(RichTextPages, LeaveAlignmentStopsAndLettersAsTheyAre) {
    RcgParaFlags(m_document, kCentred);
    RcgParaFlags(m_document, kLeftAligned);
    RcgParaTabStop(m_document, kRightTab, 2966, kNoLeader);
    Step(0);
    RcgResetParaProp(m_document);
    RcgParaTabStop(m_document, kLeftTab, 907, kNoLeader);
    Step(0);
    EXPECT_THAT(Finish(m_document),
                EndsWith("\\sectd\\f1\\fs20\\qc\\ql\\tqr\\tx2966\\keepn\\b Step\\par\r\n"
                         "\\b0 ____\\par\r\nStep Totals\\tab 2.00\\par\r\n"
                         "\\pard\\keep\\ql\\tqr\\tx2966 Cum. Totals\\tab 2.00\\par\r\n\\par\r\n"
                         "\\pard\\keep\\tx907\\keepn\\b Step\\par\r\n"
                         "\\b0 ____\\par\r\nStep Totals\\tab 2.00\\par\r\n"
                         "\\pard\\keep\\tx907 Cum. Totals\\tab 2.00\\par\r\n\\par\r\n}"));
}

TEST(RichText, TakesTextOnlyInsideTheSectionAndNothingFromADeadHandle) {
    const std::int32_t document = RcgNewDoc();
    EXPECT_NE(document, 0);
    RcgInsertText(document, "early");
    RcgBeginSectText(document);
    RcgInsertText(document, "in");
    std::int32_t length = 0;
    EXPECT_NE(RcgGetData(document, length), 0);
    RcgInsertText(document, "late");
    const std::string rich = Finish(document);
    EXPECT_THAT(rich, HasSubstr(" in}"));
    EXPECT_EQ(rich.find("early"), std::string::npos);
    EXPECT_EQ(rich.find("late"), std::string::npos);
    EXPECT_EQ(RcgInsertText(document, "dead"), 0);
    EXPECT_EQ(RcgGetData(document, length), 0);
    EXPECT_EQ(length, 0);
    EXPECT_EQ(RcgEndDoc(document), 0);
}

TEST(RichText, GivesBackWhatWasEntered) {
    const auto isSame = [](const std::string& entered) {
        const std::int32_t document = Begin();
        RcgInsertText(document, entered);
        return ShownText(Finish(document)) == WithLineFeeds(entered);
    };
    EXPECT_TRUE(isSame("\"quotes\" {braces} \\back\\ \t tabs \x01\x1F\x7F é€ŽŸ 東京 \U0001F600 \\'e9 \\par"));
    EXPECT_TRUE(isSame("one\rtwo\nthree\r\nfour\r\r\n\n"));
    EXPECT_TRUE(isSame(std::string("a\0b", 3)));
    EXPECT_TRUE(isSame(std::string(10000, '{')));
    EXPECT_TRUE(rc::check("any text", [&isSame](const std::vector<std::uint32_t>& codes) {
        RC_ASSERT(isSame(TextOf(codes)));
    }));
}

TEST(RichText, ShowsTheReplacementForBytesThatAreNoText) {
    // U+FFFD is 65533, as a signed number of 16 bits -3.
    EXPECT_EQ(Body("a\xFFz"), " a\\u-3?z");
    EXPECT_EQ(Body("\xC3"), "\\u-3?");
}

TEST(RichText, SeveralThreadsWriteDocumentsOfTheirOwn) {
    const std::size_t before = LiveRichTextDocuments();
    {
        std::vector<std::jthread> threads;
        for (char letter = 'a'; letter < 'i'; ++letter) {
            threads.emplace_back([letter] {
                for (int i = 0; i < 200; ++i) {
                    EXPECT_EQ(Body(std::string(50, letter)), " " + std::string(50, letter));
                }
            });
        }
    }
    EXPECT_EQ(LiveRichTextDocuments(), before);
}

}  // namespace
}  // namespace genvara
