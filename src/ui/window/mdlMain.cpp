// The start of the desktop program.

#include <fmt/format.h>

#include <QCommandLineParser>
#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>

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
        SetLastChance(*m_platform, [this] { return m_window->Rescue(); });
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

constexpr int kBadArguments = 2;

void Describe(QCommandLineParser& line) {
    line.setApplicationDescription("Sizes electric generator sets for a site and its load profile.");
    line.addHelpOption();
    line.addVersionOption();
    line.addPositionalArgument("project", "Project file to open, .prj or .json.", "[PROJECT]");
}

/// Whether the arguments ask for nothing but words, which need no screen.
bool AsksForWords(int argc, char** argv) {
    constexpr std::array<std::string_view, 5> kWords{"-h", "--help", "--help-all", "-v", "--version"};
    return std::any_of(argv + 1, argv + argc, [&](const char* argument) {
        return std::ranges::count(kWords, std::string_view(argument)) > 0;
    });
}

int ShowWords(int argc, char** argv) {
    const QCoreApplication words(argc, argv);
    QCommandLineParser line;
    Describe(line);
    line.process(words);  // does not return
    return EXIT_SUCCESS;
}

/// What the command line asks for.
struct Request {
    std::string project{};  ///< file to open; empty for none
    std::string refusal{};  ///< why it cannot be done, as a sentence; empty if it can
};

Request ReadCommandLine() {
    QCommandLineParser line;
    Describe(line);
    if (!line.parse(QApplication::arguments())) {
        return {.refusal = FromQt(line.errorText())};
    }
    const QStringList files = line.positionalArguments();
    if (files.size() > 1) {
        return {.refusal = fmt::format("One project can be opened at a time, and {} files were given.",
                                       files.size())};
    }
    return {.project = files.isEmpty() ? std::string() : FromQt(files.constFirst())};
}

int RunDesktop(CApplication& application, PlatformServices& platform, const std::string& project) {
    MainWindow window(platform);
    const bool started = application.Run([&](CApplication& app) { window.LoadAndShow(app, project); });
    return started && window.Loaded() ? QApplication::exec() : EXIT_FAILURE;
}

int Main(int argc, char** argv) {
    QApplication::setApplicationName("genvara");
    QApplication::setApplicationVersion(ToQt(kProgramVersionText));
    QApplication::setDesktopFileName("genvara");
    if (AsksForWords(argc, argv)) {
        return ShowWords(argc, argv);
    }
    CApplication application;
    g_App = &application;
    // Said before the toolkit starts, which ends the program where there is no screen.
    const std::string unfit = Catalogue::WhyUnfit(application.DatabaseFile());
    if (!unfit.empty()) {
        fmt::print(stderr, "genvara: {}\n", unfit);
    }
    const GenvaraApplication desktop(argc, argv);
    const Request request = ReadCommandLine();
    if (!request.refusal.empty()) {
        fmt::print(stderr, "genvara: {}\nTry \"genvara --help\".\n", request.refusal);
        return kBadArguments;
    }
    // Not as the toolkit's display name, which it would append to every caption.
    QtPlatformServices platform(ToQt(WordsOf(application.BrandLabel()).productName));
    if (!unfit.empty()) {
        platform.ShowMessage(nullptr, {.text = unfit + "\r\nThe program cannot do without it, and ends.",
                                       .icon = MessageIcon::Stop});
        return EXIT_FAILURE;
    }
    return RunDesktop(application, platform, request.project);
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
