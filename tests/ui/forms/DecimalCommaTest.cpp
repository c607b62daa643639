#include <gtest/gtest.h>

#include <QTest>

#include "CMiscLoad.h"
#include "FormsFixture.h"
#include "GermanLocale.h"
#include "frmMedLoad.h"
#include "frmMiscLoad.h"
#include "frmMtrLoad.h"

namespace genvara {
namespace {

/// A user who writes a comma before the decimals: the forms show it, take it, and store the same figures.
class DecimalComma : public FormsTest {
  protected:
    void SetUp() override {
        if (!m_german.IsBuilt()) {
            GTEST_SKIP() << "no localedef, or no sources of locales, on this machine";
        }
        GermanLocale::UseForNumbers();
    }

  private:
    GermanLocale m_german;
};

TEST_F(DecimalComma, IsTypedAndStored) {
    const auto form = New<frmMiscLoad>();
    EXPECT_EQ(TextOf(*form, "txtPF"), "1,00");
    Type(*form, "txtkW", "12.,5,");
    EXPECT_EQ(TextOf(*form, "txtkW"), "12,5");
    Type(*form, "txtPF", "0,8");
    Click(*form, "cmdOK");
    ASSERT_NE(Added<CMiscLoad>(), nullptr);
    EXPECT_EQ(Added<CMiscLoad>()->RunningRealPower(), 12500.0);
    EXPECT_EQ(Added<CMiscLoad>()->RunningPowerFactor(), 0.8);
}

TEST_F(DecimalComma, IsShownForAStoredLoad) {
    CMiscLoad load;
    load.RunningRealPower(1234.5);
    load.RunningPowerFactor(0.85);
    const auto form = Edit<frmMiscLoad>(load);
    EXPECT_EQ(TextOf(*form, "txtkW"), "1,2345");
    EXPECT_EQ(TextOf(*form, "txtPF"), "0,85");
    Click(*form, "cmdOK");
    EXPECT_EQ(load.RunningRealPower(), 1234.5);
}

TEST_F(DecimalComma, APointIsNoNumber) {
    const auto form = New<frmMiscLoad>();
    Field(*form, "txtkW").setText("12.5");  // as pasted
    QTest::keyClick(&Field(*form, "txtName"), Qt::Key_Return);
    EXPECT_EQ(platform.TakeMessage().text, "A numeric value must be entered.");
}

TEST_F(DecimalComma, IsWhatAMotorIsWorkedOutBy) {
    const auto form = New<frmMtrLoad>();
    Type(*form, "txtPower", "14,5");
    EXPECT_EQ(TextOf(*form, "txtStartingKVA"), "87,00");  // 14.5 x 6
    EXPECT_EQ(TextOf(*form, "txtStartingPF"), "0,4");
    Click(*form, "optUnloaded");
    EXPECT_EQ(TextOf(*form, "txtStartingPF"), "0,26");
    Click(*form, "cmdOK");
    ASSERT_NE(Added<CMtrLoad>(), nullptr);
    EXPECT_EQ(Added<CMtrLoad>()->HP(), 14.5);
    EXPECT_EQ(Added<CMtrLoad>()->StartingPF(), 0.26);
}

TEST_F(DecimalComma, HoldsForRangesToo) {
    const auto form = New<frmMedLoad>();
    EXPECT_EQ(TextOf(*form, "txtContPF"), "0,90");
    EntryField& field = Field(*form, "txtMaxContKVA");
    Type(*form, "txtMaxContKVA", "500,1");
    QTest::keyClick(&field, Qt::Key_Tab);
    EXPECT_TRUE(field.hasFocus());
    Type(*form, "txtMaxContKVA", "499,9");
    QTest::keyClick(&field, Qt::Key_Tab);
    EXPECT_FALSE(field.hasFocus());
}

}  // namespace
}  // namespace genvara
