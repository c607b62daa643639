#include "WindowFixture.h"

#include <QStackedWidget>
#include <QTest>
#include <QTimer>

#include "CMiscLoad.h"
#include "Globals.h"
#include "LastChance.h"
#include "ctlSideBar.h"
#include "panLoadProfile.h"

namespace genvara {

WindowTest::WindowTest(std::int32_t brandLabel) : m_brandLabel(brandLabel) {
    std::filesystem::create_directory(folder / "program");
    std::filesystem::create_symlink(GENVARA_TEST_DATABASE, folder / "program/Genvara.db");
    std::filesystem::create_directory_symlink(GENVARA_TEST_RESOURCES, folder / "program/Resources");
    Start();
}

WindowTest::~WindowTest() {
    End();
}

void WindowTest::Start() {
    m_application = std::make_unique<CApplication>(
        StartConditions{.programFolder = folder / "program",
                        .settingsFile = folder / "settings.json",
                        .stateFolder = folder / "state",
                        .brandLabel = m_brandLabel,
                        .clock = [] { return DateTime{2026, 3, 4, 15, 6, 7}; }});
    g_App = m_application.get();
    const bool started = m_application->Run([this](CApplication& application) {
        m_window = std::make_unique<frmMain>(application, platform);
        SetLastChance(platform, [this] { return m_window->Rescue(); });
        ASSERT_TRUE(m_window->Load());
        m_window->show();
        QApplication::setActiveWindow(m_window.get());
    });
    ASSERT_TRUE(started);
    QCoreApplication::processEvents();
}

void WindowTest::End() {
    m_window.reset();
    ClearLastChance();
    m_application.reset();
    g_App = nullptr;
    g_ProjectDirty = false;
}

void WindowTest::Restart() {
    End();
    Start();
}

void WindowTest::Bar(int index) {
    // 1000 twips of a fifteenth of a pixel lie between the items, the first one's picture begins at 100.
    constexpr int kPitch = 1000 / 15;
    constexpr int kIntoFirst = 100 / 15 + 20;
    auto& bar = Find<ctlSideBar>(Window(), "barMain");
    QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(bar.width() / 2, kIntoFirst + index * kPitch));
}

std::string WindowTest::ShownPanel() {
    return Window().findChild<QStackedWidget*>()->currentWidget()->objectName().toStdString();
}

void WindowTest::Open(const std::filesystem::path& file) {
    platform.files.push_back(file.string());
    Run("mnuFileOpen");
    platform.Take();
}

std::filesystem::path WindowTest::Sample(const std::string& name) {
    return std::filesystem::path(GENVARA_TEST_SAMPLES) / name;
}

void WindowTest::AddStepWithLoad() {
    CLoadProfile& profile = App().LoadProfile();
    const std::int32_t id = profile.AddLoadStep("Step", 20, 0);
    const std::int32_t number = profile.NumLoadSteps();
    auto load = std::make_unique<CMiscLoad>();
    load->name("Heater");
    load->RunningRealPower(50000);
    const std::int32_t loadId = profile.LoadStep(number).AddLoad(std::move(load));
    auto& panel = Find<panLoadProfile>(Window(), "panLoadProfile");
    panel.DisplayNewStep(number, id);
    panel.DisplayNewLoad(number, loadId);
}

void WindowTest::InNextDialog(std::function<void(QDialog&)> act) {
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr) {
            InNextDialog(act);
            return;
        }
        act(*dialog);
        if (dialog->isVisible() && QApplication::activeModalWidget() == dialog) {
            dialog->reject();  // a test that left it open must not hang
        }
    });
}

}  // namespace genvara
