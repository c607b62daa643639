#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <thread>
#include <vector>

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
        EndsWith(
            "\\sectd\\qc\\f0\\fs40\\b\\i T\\par\r\n\\ql\\tx907\\tqr\\tx1627\\tqdec\\tx2520\\f1\\fs24\\b0 "
            "x\\par\r\n\\pard\\i0 y}"));
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
    const auto isSame = [](const std::u32string& characters) {
        std::string entered;
        std::string shown;
        for (const char32_t character : characters) {
            const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
            const char32_t valid = surrogate || character > 0x10FFFF ? U'?' : character;
            const bool breaks = valid == U'\r' || valid == U'\n';
            AppendUtf8(entered, breaks ? U'\n' : valid);
            AppendUtf8(shown, breaks ? U'\n' : valid);
        }
        const std::int32_t document = Begin();
        RcgInsertText(document, entered);
        return ShownText(Finish(document)) == shown;
    };
    EXPECT_TRUE(
        isSame(U"\"quotes\" {braces} \\back\\ \t tabs \x01\x1F\x7F é€ŽŸ 東京 \U0001F600 \\'e9 \\par"));
    EXPECT_TRUE(isSame(std::u32string(10000, U'{')));
    EXPECT_TRUE(rc::check("any text", [&isSame](const std::vector<std::uint32_t>& codes) {
        std::u32string characters;
        for (const std::uint32_t code : codes) {
            characters += static_cast<char32_t>(code % 7 == 0 ? code % 0x110000 : code % 0x180);
        }
        RC_ASSERT(isSame(characters));
    }));
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
