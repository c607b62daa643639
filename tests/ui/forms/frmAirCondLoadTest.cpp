#include "frmAirCondLoad.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>
#include <set>

#include "FormsFixture.h"
#include "Texts.h"

namespace genvara {
namespace {

// The motors of these tests run at 0.8 kW and 1 kVA a horsepower and start at 0.4.
class AirCondForm : public FormsTest {
  protected:
    std::unique_ptr<frmAirCondLoad> NewSized(const char* method, const char* size) {
        auto form = New<frmAirCondLoad>();
        Click(*form, method);
        Type(*form, "txtPower", size);
        return form;
    }
    static std::string SizeTitle(const QWidget& form) {
        return FromQt(WithoutMnemonic(Find<QLabel>(form, "lblPowerTitle").text()));
    }
};

TEST_F(AirCondForm, OpensForCoolingInBTU) {
    const auto form = New<frmAirCondLoad>();
    EXPECT_EQ(form->windowTitle(), "Air Conditioning Load");
    EXPECT_TRUE(IsOn(*form, "optBTU"));
    EXPECT_EQ(SizeTitle(*form), "BTU / hr");
    EXPECT_EQ(TextOf(*form, "txtPower"), "");
    EXPECT_TRUE(IsOn(*form, "opt3Phase"));
}

TEST_F(AirCondForm, TheSizeIsTitledLikeTheSelectedOptionAndHasAKeyOfItsOwn) {
    const auto form = New<frmAirCondLoad>();
    Type(*form, "txtPower", "12");
    const struct {
        const char* option;
        const char* title;
        const char* units;
    } rows[] = {{"optTonnage", "Tonnage", "( 0 - 500 tons )"},
                {"optCompHP", "Compressor HP", "( 0 - 1000 HP )"},
                {"optBTU", "BTU / hr", "( 0 - 6250000 BTU/hr )"}};
    for (const auto& row : rows) {
        Click(*form, row.option);
        EXPECT_EQ(SizeTitle(*form), row.title);
        EXPECT_EQ(Find<QLabel>(*form, "lblPowerUnits").text(), row.units);
        EXPECT_EQ(Field(*form, "txtPower").accessibleName(), row.title);
        EXPECT_EQ(TextOf(*form, "txtPower"), "12") << "the figure stays";
        std::multiset<QChar> keys;
        const auto addKey = [&keys](const QString& caption) {
            keys.insert(caption.at(caption.indexOf('&') + 1).toUpper());
        };
        for (const auto* label : form->findChildren<QLabel*>()) {
            if (label->buddy() != nullptr) {
                addKey(label->text());
            }
        }
        for (const auto* button : form->findChildren<QAbstractButton*>()) {
            if (button->text().contains('&')) {
                addKey(button->text());
            }
        }
        const QString title = Find<QLabel>(*form, "lblPowerTitle").text();
        EXPECT_EQ(keys.count(title.at(title.indexOf('&') + 1).toUpper()), 1U) << row.title;
    }
}

TEST_F(AirCondForm, StoresTheSizeAndThePowersThatFollow) {
    const struct {
        const char* option;
        const char* size;
        std::int32_t method;
        double btu;
        double tons;
        double horsepower;
        double running;   // 800 W a horsepower
        double apparent;  // 1000 VA a horsepower
        double starting;
    } rows[] = {// 60000 x 0.00016 = 9.6 hp, in the band of 5.95 kVA a horsepower: 57.12 kVA
                {"optBTU", "60000", 0, 60000.0, -10.0, -10.0, 7680.0, 9600.0, 57120.0},
                // 5 x 2 = 10 hp x 5.95 kVA
                {"optTonnage", "5", 1, -10.0, 5.0, -10.0, 8000.0, 10000.0, 59500.0},
                // 15 hp x 5.3 kVA, and 14.99 hp x 5.95 kVA = 89.1905 kVA
                {"optCompHP", "15", 2, -10.0, -10.0, 15.0, 12000.0, 15000.0, 79500.0},
                {"optCompHP", "14.99", 2, -10.0, -10.0, 14.99, 11992.0, 14990.0, 89190.5},
                // 0.5 hp x 10.6 kVA
                {"optCompHP", ".5", 2, -10.0, -10.0, 0.5, 400.0, 500.0, 5300.0}};
    for (const auto& row : rows) {
        const auto form = NewSized(row.option, row.size);
        Type(*form, "txtQty", "2");
        Click(*form, "optPhaseB");
        Click(*form, "cmdOK");
        EXPECT_FALSE(form->isVisible());
        ASSERT_GT(Step().NumLoads(), 0);
        const auto& load = dynamic_cast<const CAirCondLoad&>(*std::prev(Step().end()));
        EXPECT_EQ(load.name(), "<Air Conditioner>");
        EXPECT_EQ(load.Quantity(), 2);
        EXPECT_EQ(load.Phases(), 2);
        EXPECT_EQ(load.DataEntryMethod(), row.method);
        EXPECT_EQ(load.BTU(), row.btu);
        EXPECT_EQ(load.Tonnage(), row.tons);
        EXPECT_EQ(load.HP(), row.horsepower);
        EXPECT_DOUBLE_EQ(load.RunningRealPower(), row.running);
        EXPECT_DOUBLE_EQ(load.RunningAppPower(), row.apparent);
        EXPECT_DOUBLE_EQ(load.StartingAppPower(), row.starting);
        EXPECT_DOUBLE_EQ(load.StartingPF(), 0.4);
    }
}

TEST_F(AirCondForm, ReportsInItsOwnWords) {
    const struct {
        const char* option;
        const char* quantity;
        const char* size;
        const char* text;
        const char* field;
    } rows[] = {
        {"optBTU", "", "60000", "The quantity must be a positive integer.", "txtQty"},
        {"optBTU", "0", "60000", "The quantity must be a positive integer.", "txtQty"},
        {"optBTU", "257", "60000", "The quantity must be a positive integer.", "txtQty"},
        {"optBTU", "99999999999", "60000", "The quantity must be a positive integer.", "txtQty"},
        {"optBTU", "1", "", "The A/C rating must be numeric.", "txtPower"},
        {"optTonnage", "1", ".", "The A/C rating must be numeric.", "txtPower"},
        {"optBTU", "1", "0", "The A/C rating is out of range.", "txtPower"},
        {"optBTU", "1", "6250001", "The A/C rating is out of range.", "txtPower"},
        {"optTonnage", "1", "500.01", "The A/C rating is out of range.", "txtPower"},
        {"optCompHP", "1", "1000.5", "The A/C rating is out of range.", "txtPower"},
    };
    for (const auto& row : rows) {
        const auto form = NewSized(row.option, row.size);
        Type(*form, "txtQty", row.quantity);
        Click(*form, "cmdOK");
        const Message message = platform.TakeMessage();
        EXPECT_EQ(message.text, row.text);
        EXPECT_EQ(message.title, "ERROR");
        EXPECT_EQ(message.icon, MessageIcon::Stop);
        EXPECT_TRUE(form->isVisible());
        EXPECT_TRUE(Field(*form, row.field).InError());
        EXPECT_TRUE(Field(*form, row.field).hasFocus());
        EXPECT_EQ(Step().NumLoads(), 0);
    }
    EXPECT_FALSE(host.changed);
}

TEST_F(AirCondForm, KeepsBackInSilenceWhosePowersAreOutOfRange) {
    // 1000 hp run at 800 kW by these motors and 900 hp at 900 kVA; a load takes 798 kW and 887 kVA.
    for (const char* size : {"1000", "900"}) {
        const auto form = NewSized("optCompHP", size);
        Click(*form, "cmdOK");
        EXPECT_TRUE(platform.Take().empty());
        EXPECT_TRUE(form->isVisible());
        EXPECT_FALSE(Field(*form, "txtPower").InError());
        EXPECT_EQ(Step().NumLoads(), 0);
        Type(*form, "txtPower", "880");
        Click(*form, "cmdOK");
        ASSERT_NE(Added<CAirCondLoad>(), nullptr);
        EXPECT_NEAR(Added<CAirCondLoad>()->RunningRealPower(), 704000.0, 0.001);
        Step().DeleteLoad(Step().begin()->ID());
    }
}

TEST_F(AirCondForm, ShowsTheStoredSize) {
    const struct {
        const char* option;
        const char* size;
        const char* title;
    } rows[] = {{"optBTU", "60000", "BTU / hr"},
                {"optTonnage", "12.5", "Tonnage"},
                {"optCompHP", "7.5", "Compressor HP"}};
    for (const auto& row : rows) {
        Click(*NewSized(row.option, row.size), "cmdOK");
        auto& load = *std::prev(Step().end());
        const auto form = Edit<frmAirCondLoad>(load);
        EXPECT_TRUE(IsOn(*form, row.option));
        EXPECT_EQ(TextOf(*form, "txtPower"), row.size);
        EXPECT_EQ(SizeTitle(*form), row.title);
    }
}

TEST_F(AirCondForm, AnotherMethodClearsTheFormerSize) {
    Click(*NewSized("optTonnage", "5"), "cmdOK");
    auto* load = Added<CAirCondLoad>();
    ASSERT_NE(load, nullptr);
    const auto form = Edit<frmAirCondLoad>(*load);
    Click(*form, "optBTU");
    Type(*form, "txtPower", "12500");
    Click(*form, "cmdOK");
    EXPECT_EQ(load->DataEntryMethod(), 0);
    EXPECT_EQ(load->Tonnage(), -10.0);
    EXPECT_EQ(load->BTU(), 12500.0);
    EXPECT_DOUBLE_EQ(load->RunningAppPower(), 2000.0);  // 12500 x 0.00016 = 2 hp
}

TEST_F(AirCondForm, AFailedOkLeavesAnEditedLoadAlone) {
    Click(*NewSized("optTonnage", "5"), "cmdOK");
    auto* load = Added<CAirCondLoad>();
    ASSERT_NE(load, nullptr);
    const std::string before = Members(*load);
    const auto form = Edit<frmAirCondLoad>(*load);
    Click(*form, "optCompHP");
    Type(*form, "txtName", "Other");
    Type(*form, "txtPower", "900");  // 900 kVA, above the 887 kVA that a load takes
    Click(*form, "cmdOK");
    EXPECT_TRUE(form->isVisible());
    EXPECT_EQ(Members(*load), before);
}

TEST_F(AirCondForm, OkAtOnceChangesNothing) {
    // A load of a code of no method would become one in BTU; project files hold none.
    const char* options[] = {"optBTU", "optTonnage", "optCompHP"};
    const char* sizes[] = {"400.5", "1", "0.75", "33.3", "123.456", "440"};
    for (std::int32_t i = 0; i < 18; ++i) {
        host.phases = 3;
        const auto form = NewSized(options[i % 3], sizes[i / 3]);
        Type(*form, "txtName", "Cooler");
        Type(*form, "txtQty", std::to_string(1 + i * 15).c_str());
        const char* phases[] = {"opt3Phase", "optPhaseA", "optPhaseB", "optPhaseC"};
        Click(*form, phases[i % 4]);
        Click(*form, "cmdOK");
        ASSERT_FALSE(form->isVisible());
        host.phases = i % 2 == 0 ? 3 : 1;
        ExpectOkChangesNothing<frmAirCondLoad>(*std::prev(Step().end()));
    }
}

TEST_F(AirCondForm, TakesDigitsAndOneSeparator) {
    const auto form = NewSized("optTonnage", "-1.2.3e");
    EXPECT_EQ(TextOf(*form, "txtPower"), "1.23");
    EXPECT_EQ(platform.beeps, 3);
}

}  // namespace
}  // namespace genvara
