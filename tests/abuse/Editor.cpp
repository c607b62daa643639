// The desktop program with somebody who types in it, to be killed: kill_editor.py.
//
//     editor STATE PROJECT              edits the project; tells each edit's number once it is on screen
//     editor STATE PROJECT --lost       what programs left that did not end: number and file, a line each

#include <fmt/format.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>
#include <cstdio>
#include <filesystem>
#include <string>

#include "CApplication.h"
#include "CMiscLoad.h"
#include "Globals.h"
#include "KeptWords.h"
#include "QtPlatformServices.h"
#include "frmErrLog.h"
#include "frmMain.h"
#include "frmSplash.h"

namespace genvara {
namespace {

constexpr int kPauseBetweenEdits = 15;  // milliseconds

/// Edits in turn as a person would: by typing, and by changes of the load profile.
class Editor {
  public:
    Editor(frmMain& window, CApplication& application) : m_window(&window), m_application(&application) {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Edit(); });
        m_timer.start(kPauseBetweenEdits);
    }

  private:
    void Edit() {
        ++m_number;
        Type(*m_window->findChild<QLineEdit*>("txtName"), fmt::format("Generation {:08}", m_number));
        if (m_number % 3 == 0) {
            m_window->ChangeProject("Edit", [this] { ChangeProfile(); });
        }
        if (m_number % 7 == 0) {
            m_window->findChild<QAction*>("mnuEditUndo")->trigger();
            m_window->findChild<QAction*>("mnuEditRedo")->trigger();
        }
        fmt::print("{}\n", m_number);
        std::fflush(stdout);
    }
    static void Type(QLineEdit& field, const std::string& text) {
        field.setFocus();
        field.selectAll();
        for (const char letter : text) {
            QKeyEvent key(QEvent::KeyPress, 0, Qt::NoModifier, QString(QChar(letter)));
            QApplication::sendEvent(&field, &key);
        }
    }
    void ChangeProfile() {
        CLoadProfile& profile = m_application->LoadProfile();
        if (profile.NumLoadSteps() > 3) {
            profile.DeleteLoadStep(profile.LoadStep(1).StepID());
            return;
        }
        profile.AddLoadStep(std::to_string(m_number), 20, 0);
        auto load = std::make_unique<CMiscLoad>();
        load->RunningRealPower(m_number);
        profile.LoadStep(profile.NumLoadSteps()).AddLoad(std::move(load));
    }

    frmMain* m_window;
    CApplication* m_application;
    QTimer m_timer;
    int m_number = 0;
};

int TellLost(CApplication& application) {
    application.LoadMotorConversions();  // as the window does
    for (const KeptProject& kept : TakeOverLost(application.StateFolder() / "recovery")) {
        const KeptWords words = WordsOf(kept, application.Defaults(), application.Catalogue());
        fmt::print("{}\t{}\t{}\n", words.name, kept.origin.file, words.fault);
        RemoveKept(kept.project);
    }
    return 0;
}

int Run(int argc, char** argv) {
    const QApplication desktop(argc, argv);
    const std::filesystem::path state = argv[1];
    CApplication application({.settingsFile = state / "settings.json", .stateFolder = state});
    g_App = &application;
    QtPlatformServices platform("Genvara");
    std::unique_ptr<frmMain> window;
    std::unique_ptr<Editor> editor;
    int status = 1;
    application.Run([&](CApplication& app) {
        if (argc > 3) {
            status = TellLost(app);
            return;
        }
        window = std::make_unique<frmMain>(app, platform);
        if (window->Load()) {
            window->OpenFile(argv[2]);
            window->show();
            editor = std::make_unique<Editor>(*window, app);
            status = QApplication::exec();
        }
    });
    editor.reset();
    window.reset();
    return status;
}

}  // namespace
}  // namespace genvara

int main(int argc, char** argv) {
    if (argc < 3) {
        fmt::print(stderr, "editor STATE PROJECT [--lost]\n");
        return 2;
    }
    return genvara::Run(argc, argv);
}
