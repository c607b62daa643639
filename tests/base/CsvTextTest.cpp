#include "CsvText.h"

#include <gtest/gtest.h>

namespace genvara {
namespace {

TEST(CsvText, AFormulaIsATextAndANumberANumber) {
    for (const char* formula : {"=1+1", "+A1", "-A1", "@SUM(A1)", " =1", "\t=1", "-1+1", "+1 kW"}) {
        EXPECT_EQ(WithoutFormula(formula), std::string("'") + formula);
    }
    for (const char* text :
         {"", " ", "-", "=", "pump", "a=1", "'=1", "-1", "+1.5", "-1E+03", "12\"", "1-2"}) {
        EXPECT_EQ(WithoutFormula(text), text);
    }
}

TEST(CsvText, ACellStandsInQuotesWhereItHasTo) {
    EXPECT_EQ(CsvCell("pump"), "pump");
    EXPECT_EQ(CsvCell("a,b"), "\"a,b\"");
    EXPECT_EQ(CsvCell("12\" pump"), "\"12\"\" pump\"");
    EXPECT_EQ(CsvCell("two\nlines"), "\"two\nlines\"");
    EXPECT_EQ(CsvCell("=HYPERLINK(\"x\",1)"), "\"'=HYPERLINK(\"\"x\"\",1)\"");
    EXPECT_EQ(CsvCell("-2.5"), "-2.5");
}

}  // namespace
}  // namespace genvara
