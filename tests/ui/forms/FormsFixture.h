#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "CApplication.h"
#include "EntryField.h"
#include "LoadForm.h"
#include "LoadForms.h"
#include "RaisedError.h"
#include "ScriptedPlatform.h"
#include "TemporaryFolder.h"

namespace genvara {

/// A window that tells the forms what a test wants it to tell.
class ScriptedHost final : public LoadFormHost {
  public:
    std::int32_t step = 1;
    std::int32_t phases = 3;
    std::optional<RaisedError> stepFails;
    std::optional<RaisedError> displayFails;
    bool changed = false;
    std::vector<std::pair<std::int32_t, std::int32_t>> displayed;  ///< step number and load ID

    [[nodiscard]] std::int32_t SelectedStep() const override {
        if (stepFails) {
            throw RaisedError(*stepFails);
        }
        return step;
    }
    [[nodiscard]] std::int32_t Phases() const override { return phases; }
    void ProjectChanged() override { changed = true; }
    void DisplayNewLoad(std::int32_t stepNumber, std::int32_t loadId) override {
        if (displayFails) {
            throw RaisedError(*displayFails);
        }
        displayed.emplace_back(stepNumber, loadId);
    }
};

/// Every member of a load that a form may store, figures with the 15 digits that a project file keeps of
/// them: kilowatts times 1000 may differ from the watts in the last bit.
[[nodiscard]] std::string Members(const Load& load);

/// An application with two empty steps and the motor tables of `MotorCalculatorTables.h`, and whatever the
/// forms ask of the window and the desktop.
class FormsTest : public testing::Test {
  protected:
    FormsTest();
    ~FormsTest() override;

    [[nodiscard]] LoadFormServices Services() {
        return {
            .owner = nullptr,
            .platform = platform,
            .host = host,
            .project = {
                .profile = App().LoadProfile(), .site = App().PowerSystem(), .catalogue = App().Catalogue()}};
    }
    [[nodiscard]] CApplication& App() const { return *m_application; }

    /// A form for a new load, on screen.
    template <typename Form>
    std::unique_ptr<Form> New() {
        auto form = std::make_unique<Form>(Services());
        form->open();
        QApplication::setActiveWindow(form.get());
        return form;
    }
    /// A form for a stored load, on screen.
    template <typename Form>
    std::unique_ptr<Form> Edit(Load& load, std::int32_t stepNumber = 1) {
        auto form = std::make_unique<Form>(Services());
        form->CurrentLoad(load, stepNumber);
        form->open();
        QApplication::setActiveWindow(form.get());
        return form;
    }

    /// Opens a stored load for edit and presses OK at once: no member may change, and nothing be reported.
    template <typename Form>
    void ExpectOkChangesNothing(Load& load) {
        const std::string before = Members(load);
        const auto form = Edit<Form>(load);
        EXPECT_EQ(Members(load), before) << "by opening";
        form->template findChild<QAbstractButton*>("cmdOK")->click();
        EXPECT_FALSE(form->isVisible());
        EXPECT_EQ(Members(load), before);
        EXPECT_TRUE(platform.Take().empty());
    }

    [[nodiscard]] CLoadStep& Step(std::int32_t number = 1) const;
    /// The one load of step 1, as what it is; null unless there is exactly one.
    template <typename LoadClass>
    LoadClass* Added() const {
        EXPECT_EQ(Step().NumLoads(), 1);
        return Step().NumLoads() == 1 ? dynamic_cast<LoadClass*>(&*Step().begin()) : nullptr;
    }

    TemporaryFolder folder;
    ScriptedPlatform platform;
    ScriptedHost host;

  private:
    std::unique_ptr<CApplication> m_application;
};

/// A control by its name; a control that is missing ends the test program with its name.
template <typename Widget>
Widget& Find(const QWidget& form, const char* name) {
    auto* found = form.findChild<Widget*>(name);
    if (found == nullptr) {
        throw std::runtime_error(std::string("no control ") + name);
    }
    return *found;
}

[[nodiscard]] EntryField& Field(const QWidget& form, const char* name);
[[nodiscard]] std::string TextOf(const QWidget& form, const char* name);
/// Replaces a field's text by typing.
void Type(const QWidget& form, const char* name, const char* text);
void Click(const QWidget& form, const char* name);
[[nodiscard]] bool IsOn(const QWidget& form, const char* name);
[[nodiscard]] bool IsEnabled(const QWidget& form, const char* name);

}  // namespace genvara
