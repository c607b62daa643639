// A user who writes a comma before the decimals sees no other separator beside what he enters.

#include <QLabel>
#include <QRegularExpression>
#include <QTest>
#include <QTreeWidget>

#include "EntryField.h"
#include "GermanLocale.h"
#include "Load.h"
#include "MakeLoadForm.h"
#include "ReportView.h"
#include "Texts.h"
#include "WindowFixture.h"

namespace genvara {
namespace {

class OneSeparator : public WindowTest {
  protected:
    void SetUp() override {
        if (!m_german.IsBuilt()) {
            GTEST_SKIP() << "no localedef, or no sources of locales, on this machine";
        }
        GermanLocale::UseForNumbers();
        Restart();
        platform.Take();
    }
    /// A point between two digits.
    static bool HasPoint(const QString& text) {
        static const QRegularExpression point("\\d\\.\\d");
        return point.match(text).hasMatch();
    }
    static void ExpectNoPoint(const QWidget& window) {
        for (const auto* field : window.findChildren<QLineEdit*>()) {
            EXPECT_FALSE(HasPoint(field->text())) << field->objectName().toStdString();
        }
        for (const auto* label : window.findChildren<QLabel*>()) {
            EXPECT_FALSE(HasPoint(label->text())) << label->text().toStdString();
        }
    }

  private:
    GermanLocale m_german;
};

TEST_F(OneSeparator, OnThePowerSystemPanel) {
    Bar(1);
    auto& altitude = Control<EntryField>("panPwrSys", "txtAltitude");
    altitude.setFocus();
    altitude.setText("328,1");
    QTest::keyClick(&altitude, Qt::Key_Tab);
    EXPECT_TRUE(platform.Take().empty());
    EXPECT_NEAR(App().PowerSystem().Altitude(), 100.005, 0.001);
    altitude.setFocus();
    altitude.setText("99999");
    QTest::keyClick(&altitude, Qt::Key_Tab);
    EXPECT_EQ(altitude.statusTip(), "Altitude: 99999 is out of range. Enter -1640,4 to 15000 feet.");
    ExpectNoPoint(Find<QWidget>(Window(), "panPwrSys"));
}

TEST_F(OneSeparator, InThePropertiesBesideTheSteps) {
    Open(Sample("hospital.prj"));
    Bar(2);
    auto& tree = Control<QTreeWidget>("panLoadProfile", "tlsProfileDisplay");
    auto& properties = Control<QTreeWidget>("panLoadProfile", "tlsPropertyDisplay");
    int commas = 0;
    for (int step = 0; step < tree.topLevelItemCount(); ++step) {
        for (int load = -1; load < tree.topLevelItem(step)->childCount(); ++load) {
            tree.setCurrentItem(load < 0 ? tree.topLevelItem(step) : tree.topLevelItem(step)->child(load));
            for (int row = 0; row < properties.topLevelItemCount(); ++row) {
                const QTreeWidgetItem& item = *properties.topLevelItem(row);
                if (item.text(0) != "Name" && item.text(0) != "Description") {
                    EXPECT_FALSE(HasPoint(item.text(1))) << item.text(0).toStdString();
                }
                commas += static_cast<int>(item.text(1).count(','));
            }
        }
    }
    EXPECT_GT(commas, 20);
}

TEST_F(OneSeparator, OnEveryForm) {
    AddStepWithLoad();
    for (std::int32_t type = 0; type < load_type::kCount; ++type) {
        const auto form = MakeLoadForm(type, {.owner = &Window(),
                                              .platform = platform,
                                              .host = Window(),
                                              .project = {.profile = App().LoadProfile(),
                                                          .site = App().PowerSystem(),
                                                          .catalogue = App().Catalogue()}});
        form->show();
        if (auto* power = form->findChild<EntryField*>("txtPower")) {
            QTest::keyClicks(power, "12,5");
        }
        ExpectNoPoint(*form);
    }
}

TEST_F(OneSeparator, ReportsKeepTheirPoint) {
    AddStepWithLoad();
    Bar(3);
    EXPECT_TRUE(HasPoint(ToQt(Control<ReportView>("panRecommend", "rtfRecommend").RichText())));
}

}  // namespace
}  // namespace genvara
