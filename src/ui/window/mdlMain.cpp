// The start of the desktop program.

#include <fmt/format.h>

#include <QCommandLineParser>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "CApplication.h"
#include "FailureRegion.h"
#include "GenvaraApplication.h"
#include "Globals.h"
#include "LastChance.h"
#include "ProgramVersion.h"
#include "QtPlatformServices.h"
#include "Texts.h"
#include "frmErrLog.h"
#include "frmMain.h"
#include "frmSplash.h"

namespace genvara {
namespace {

/// Folder for what has to outlive a failed run.
std::filesystem::path StateFolder() {
    const char* state = std::getenv("XDG_STATE_HOME");
    if (state != nullptr && *state == '/') {
        return std::filesystem::path(state) / "genvara";
    }
    const char* home = std::getenv("HOME");
    return std::filesystem::path(home == nullptr ? "." : home) / ".local/state/genvara";
}

/// The main window, with the handler of failures that nobody else handles, for as long as the window lives.
class MainWindow {
  public:
    explicit MainWindow(PlatformServices& platform) : m_platform(&platform) {}
    ~MainWindow() { ClearLastChance(); }
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;
    MainWindow(MainWindow&&) = delete;
    MainWindow& operator=(MainWindow&&) = delete;

    void LoadAndShow(CApplication& application, const std::string& project) {
        m_window = std::make_unique<frmMain>(application, *m_platform);
        SetLastChance(*m_platform, [this] { return m_window->Rescue(StateFolder()); });
        m_loaded = m_window->Load();
        if (m_loaded) {
            m_window->Appear([this, project] {
                if (!project.empty()) {
                    m_window->OpenFile(std::filesystem::absolute(project).string());
                }
            });
        }
    }
    [[nodiscard]] bool Loaded() const noexcept { return m_loaded; }

  private:
    PlatformServices* m_platform;
    std::unique_ptr<frmMain> m_window;
    bool m_loaded = false;
};

/// Reads the command line; the project file to open, if any. Help and version end the program here.
std::string ProjectOfCommandLine(const GenvaraApplication& desktop) {
    QCommandLineParser line;
    line.setApplicationDescription("Sizes electric generator sets for a site and its load profile.");
    line.addHelpOption();
    line.addVersionOption();
    line.addPositionalArgument("project", "Project file to open.", "[PROJECT.prj]");
    line.process(desktop);
    return line.positionalArguments().isEmpty() ? std::string()
                                                : FromQt(line.positionalArguments().constFirst());
}

int Main(int argc, char** argv) {
    QApplication::setApplicationName("genvara");
    QApplication::setApplicationVersion(ToQt(kProgramVersionText));
    QApplication::setDesktopFileName("genvara");
    const GenvaraApplication desktop(argc, argv);
    CApplication application;
    g_App = &application;
    const std::string project = ProjectOfCommandLine(desktop);
    // Not as the toolkit's display name, which it would append to every caption.
    QtPlatformServices platform(ToQt(WordsOf(application.BrandLabel()).productName));
    MainWindow window(platform);
    const bool started = application.Run([&](CApplication& app) { window.LoadAndShow(app, project); });
    return started && window.Loaded() ? QApplication::exec() : EXIT_SUCCESS;
}

}  // namespace
}  // namespace genvara

int main(int argc, char** argv) {
    // A file that grows beyond the user's limit of file sizes shows as a failed write, which is told like any
    // other; the signal would end the program with the project unsaved.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return genvara::Main(argc, argv);
    } catch (const std::exception& failure) {
        fmt::print(stderr, "genvara: {}\n", failure.what());
        return EXIT_FAILURE;
    }
}
