#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPixmap>
#include <QPushButton>
#include <QTest>
#include <map>
#include <random>

#include "FieldError.h"
#include "FormsFixture.h"
#include "LoadFactory.h"
#include "MakeLoadForm.h"

/// What holds for the forms of all kinds alike.
namespace genvara {
namespace {

/// Codes of the kinds that have a form.
std::vector<std::int32_t> KindsWithForm(const LoadFormServices& services) {
    std::vector<std::int32_t> kinds;
    for (std::int32_t type = 0; type < load_type::kCount; ++type) {
        if (MakeLoadForm(type, services)) {
            kinds.push_back(type);
        }
    }
    return kinds;
}

using AllForms = FormsTest;

TEST_F(AllForms, EveryControlHasANameAKeyAndAWordForReaders) {
    for (const std::int32_t type : KindsWithForm(Services())) {
        const auto form = MakeLoadForm(type, Services());
        form->show();
        std::map<QString, QString> keys;
        const auto useKey = [&](const QString& caption, const QString& of) {
            const qsizetype mark = caption.indexOf('&');
            ASSERT_GE(mark, 0) << form->objectName().toStdString() << ": " << of.toStdString();
            const QString key = caption.mid(mark + 1, 1).toUpper();
            EXPECT_FALSE(keys.contains(key)) << form->objectName().toStdString() << ": " << of.toStdString()
                                             << " and " << keys[key].toStdString() << " share a key";
            keys[key] = of;
        };
        for (const auto* label : form->findChildren<QLabel*>()) {
            if (label->buddy() != nullptr) {
                useKey(label->text(), label->buddy()->objectName());
            }
        }
        for (const auto* button : form->findChildren<QAbstractButton*>()) {
            if (!button->text().isEmpty() && !button->objectName().startsWith("cmdOK") &&
                !button->objectName().startsWith("cmdCancel")) {
                useKey(button->text(), button->objectName());
            }
        }
        for (const auto* widget : form->findChildren<QWidget*>()) {
            const bool entry = qobject_cast<const QLineEdit*>(widget) != nullptr ||
                               qobject_cast<const QComboBox*>(widget) != nullptr;
            if (entry) {
                EXPECT_FALSE(widget->objectName().isEmpty());
                EXPECT_FALSE(widget->accessibleName().isEmpty()) << widget->objectName().toStdString();
                EXPECT_FALSE(widget->accessibleName().contains('&'));
            }
        }
    }
}

TEST_F(AllForms, TabGoesDownTheFieldsThenToThePhasesAndEndsAtTheButtons) {
    for (const std::int32_t type : KindsWithForm(Services())) {
        const auto form = MakeLoadForm(type, Services());
        form->show();
        QApplication::setActiveWindow(form.get());
        Field(*form, "txtStepNum").setFocus();
        std::vector<QString> order;
        for (int i = 0; i < 60; ++i) {
            order.push_back(QApplication::focusWidget()->objectName());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            if (QApplication::focusWidget() == &Field(*form, "txtStepNum")) {
                break;
            }
        }
        EXPECT_EQ(QApplication::focusWidget(), &Field(*form, "txtStepNum"));
        ASSERT_GE(order.size(), 6U);
        EXPECT_EQ(order[1], "txtQty");
        EXPECT_EQ(order[2], "txtName");
        EXPECT_EQ(order[order.size() - 2], "cmdOK");
        EXPECT_EQ(order.back(), "cmdCancel");
        const auto place = [&](const QString& name) { return std::ranges::find(order, name); };
        const auto phases = place("opt3Phase");
        ASSERT_NE(phases, order.end());
        for (const auto* field : form->findChildren<EntryField*>()) {
            if (field->isEnabled() && field->isVisible()) {
                EXPECT_LT(place(field->objectName()), phases)
                    << form->objectName().toStdString() << ": " << field->objectName().toStdString();
            }
        }
    }
}

TEST_F(AllForms, TheSentenceBesideAFieldLeavesTheButtonsToBeClicked) {
    for (const std::int32_t type : KindsWithForm(Services())) {
        const auto form = MakeLoadForm(type, Services());
        form->show();
        for (auto* field : form->findChildren<EntryField*>()) {
            if (!field->isVisible()) {
                continue;
            }
            field->ShowError(
                "Power of the compressor: 99999999 is out of range. Enter a number above 0, up to 1000.");
            const auto* note = form->findChild<FieldNote*>();
            ASSERT_NE(note, nullptr);
            const int top = field->mapTo(form.get(), QPoint(0, 0)).y();
            EXPECT_TRUE(form->rect().contains(note->geometry()));
            EXPECT_TRUE(note->y() >= top + field->height() || note->geometry().bottom() < top);
            for (const char* name : {"cmdOK", "cmdCancel"}) {
                const auto& button = Find<QPushButton>(*form, name);
                const QRect place(button.mapTo(form.get(), QPoint(0, 0)), button.size());
                EXPECT_FALSE(note->geometry().intersects(place))
                    << form->objectName().toStdString() << ": " << field->objectName().toStdString()
                    << " hides " << name;
            }
            field->ClearError();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
}

TEST_F(AllForms, ASingleInputSystemOffersNoThreePhases) {
    host.phases = 1;
    for (const std::int32_t type : KindsWithForm(Services())) {
        const auto form = MakeLoadForm(type, Services());
        EXPECT_FALSE(IsEnabled(*form, "opt3Phase"));
        EXPECT_TRUE(IsOn(*form, "optPhaseA"));
    }
}

/// Drives a form at random: typing, clicking, choosing, leaving.
void DriveAtRandom(LoadForm& form, std::mt19937& random) {
    const auto upTo = [&](std::size_t most) { return static_cast<qsizetype>(random() % most); };
    const QList<EntryField*> fields = form.findChildren<EntryField*>();
    const QList<QAbstractButton*> buttons = form.findChildren<QAbstractButton*>();
    const QList<QComboBox*> lists = form.findChildren<QComboBox*>();
    static constexpr std::string_view kKeys = "0123456789..,-ex ";
    for (int i = 0; i < 60 && form.isVisible(); ++i) {
        switch (upTo(5)) {
            case 0:
            case 1:
                QTest::keyClick(fields[upTo(static_cast<std::size_t>(fields.size()))],
                                kKeys[static_cast<std::size_t>(upTo(kKeys.size()))]);
                break;
            case 2:
                if (QAbstractButton* button = buttons[upTo(static_cast<std::size_t>(buttons.size()))];
                    button->objectName() != "cmdAdvanced") {
                    button->click();
                }
                break;
            case 3:
                if (!lists.isEmpty()) {
                    QTest::keyClick(lists[upTo(static_cast<std::size_t>(lists.size()))],
                                    upTo(2) == 0 ? Qt::Key_Down : Qt::Key_Up);
                }
                break;
            default:
                fields[upTo(static_cast<std::size_t>(fields.size()))]->setFocus();
                QTest::keyClick(QApplication::focusWidget(), upTo(2) == 0 ? Qt::Key_Tab : Qt::Key_Delete);
        }
    }
}

TEST_F(AllForms, RandomTypingAddsLoadsThatHoldTheirRangesAndNothingElse) {
    std::mt19937 random(20240717);
    for (const std::int32_t type : KindsWithForm(Services())) {
        for (int round = 0; round < 25; ++round) {
            host.phases = round % 3 == 0 ? 1 : 3;
            const auto form = MakeLoadForm(type, Services());
            form->show();
            QApplication::setActiveWindow(form.get());
            DriveAtRandom(*form, random);
            form->reject();
            EXPECT_TRUE(platform.ends.empty()) << platform.ends.front().Description();
        }
    }
    std::int32_t loads = 0;
    for (const CLoadStep& step : App().LoadProfile()) {
        for (const Load& load : step) {
            ++loads;
            EXPECT_GE(load.Quantity(), 1);
            EXPECT_LE(load.Quantity(), 256);
            EXPECT_FALSE(load.name().empty());
            EXPECT_TRUE(std::isfinite(load.RunningRealPower()));
        }
    }
    EXPECT_EQ(loads, static_cast<std::int32_t>(host.displayed.size()));
    EXPECT_EQ(host.changed, loads > 0);
}

/// Draws all forms, into the folder that GENVARA_PICTURES names if somebody wants to look at them.
TEST_F(AllForms, CanBeLookedAt) {
    const QString pictures =
        qEnvironmentVariable("GENVARA_PICTURES", QString::fromStdString(folder.Path().string()));
    for (const std::int32_t type : KindsWithForm(Services())) {
        for (const std::int32_t phases : {3, 1}) {
            host.phases = phases;
            const auto form = MakeLoadForm(type, Services());
            form->show();
            QCoreApplication::processEvents();
            EXPECT_TRUE(
                form->grab().save(QString("%1/%2-new-%3.png").arg(pictures, form->objectName()).arg(phases)));
            const auto load = MakeLoad(type, App().Motors());
            load->name("Chiller 2");
            load->Description("Roof of the east wing");
            const auto edit = MakeLoadForm(type, Services());
            edit->CurrentLoad(*load, 4);
            edit->show();
            QCoreApplication::processEvents();
            EXPECT_TRUE(edit->grab().save(
                QString("%1/%2-edit-%3.png").arg(pictures, edit->objectName()).arg(phases)));
        }
    }
}

}  // namespace
}  // namespace genvara
