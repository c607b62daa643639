#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "CApplication.h"
#include "ScriptedPlatform.h"
#include "TemporaryFolder.h"
#include "frmErrLog.h"
#include "frmMain.h"
#include "frmSplash.h"

namespace genvara {

/// A widget, action or menu of a window by its name; one that is missing ends the test with its name.
template <typename Object>
Object& Find(const QObject& window, const char* name) {
    auto* found = window.findChild<Object*>(name);
    if (found == nullptr) {
        throw std::runtime_error(std::string("no ") + name);
    }
    return *found;
}

/// The main window of an application of its own: real catalogue, settings of its own, a scripted desktop.
class WindowTest : public testing::Test {
  protected:
    explicit WindowTest(std::int32_t brandLabel = brand::kMorvane);
    ~WindowTest() override;

    [[nodiscard]] CApplication& App() { return *m_application; }
    [[nodiscard]] frmMain& Window() { return *m_window; }

    /// Ends the program, with its shutdown writes, and starts it again.
    void Restart();

    /// Runs a command of a menu, whether it is enabled or not is the caller's to look at.
    void Run(const char* action) { Find<QAction>(Window(), action).trigger(); }
    [[nodiscard]] bool Enabled(const char* action) { return Find<QAction>(Window(), action).isEnabled(); }
    /// Clicks an item of the side bar with the mouse.
    void Bar(int index);

    template <typename Widget>
    [[nodiscard]] Widget& Control(const char* panel, const char* name) {
        return Find<Widget>(Find<QWidget>(Window(), panel), name);
    }
    /// Name of the panel that is shown.
    [[nodiscard]] std::string ShownPanel();

    /// Opens a project file through the open command.
    void Open(const std::filesystem::path& file);
    [[nodiscard]] static std::filesystem::path Sample(const std::string& name);
    /// A step with one load of 50 kW, unity power factor, in the model and on its panel.
    void AddStepWithLoad();

    /// Lets a test act in the next modal dialog, from within its event loop.
    static void InNextDialog(std::function<void(QDialog&)> act);
    static void Click(QWidget& window, const char* button) { Find<QAbstractButton>(window, button).click(); }

    TemporaryFolder folder;
    ScriptedPlatform platform;

  private:
    void Start();
    void End();

    std::int32_t m_brandLabel;
    std::unique_ptr<CApplication> m_application;
    std::unique_ptr<frmMain> m_window;
};

}  // namespace genvara
