// The main window: its load sequence, its panels, and its end.

#include "frmMain.h"

#include <QApplication>
#include <QCloseEvent>
#include <QIcon>
#include <QStackedWidget>
#include <QTimer>
#include <algorithm>
#include <utility>

#include "FailureRegion.h"
#include "FieldCheck.h"
#include "FormGrid.h"
#include "Globals.h"
#include "LastChance.h"
#include "Texts.h"
#include "WaitCursor.h"
#include "ctlSideBar.h"
#include "frmAnalysis.h"
#include "frmErrLog.h"
#include "frmSplash.h"
#include "panLoadProfile.h"
#include "panProject.h"
#include "panPwrSys.h"
#include "panRecommend.h"

namespace genvara {
namespace {

/// Indexes of the panels in the side bar.
constexpr std::int32_t kProject = 0;
constexpr std::int32_t kPowerSystem = 1;
constexpr std::int32_t kLoadProfile = 2;
constexpr std::int32_t kRecommend = 3;

// 12000 by 8500 twips of a fifteenth of a pixel.
constexpr int kWidth = 800;
constexpr int kHeight = 567;
constexpr int kSplashMilliseconds = 3000;
/// How long the splash is seen before the window takes its place [ms].
constexpr int kSplashSight = 1000;
constexpr const char* kSplashPicture = "\\Resources\\GenvaraSplash.bmp";

constexpr std::int32_t kConnectionOptionsError = 30;

}  // namespace

frmMain::frmMain(CApplication& application, PlatformServices& platform)
    : m_application(&application),
      m_platform(&platform),
      m_log(application.Folder()),
      m_recent(application.Registry(), CApplication::BaseRegistrySubkey()),
      m_place(application.Registry(), CApplication::BaseRegistrySubkey() + "Window"),
      m_analysisPlace(application.Registry(), CApplication::BaseRegistrySubkey() + "Analysis"),
      m_recovery(application.StateFolder() / "recovery", application.Motors()) {
    setObjectName("frmMain");
    application.HelpFile().HelpViewer([this](std::int32_t, const std::string& file, std::int32_t command) {
        return command == help_command::kQuit ? m_platform->CloseHelp()
                                              : m_platform->ShowHelp(this, file, {});
    });
    BuildMenus();
    BuildToolbar();
    BuildPanels();
    BuildShortcuts();
    qApp->installEventFilter(this);
}

frmMain::~frmMain() {
    // The focus moves once more as the controls go, when this is a main window no longer.
    disconnect(qApp, nullptr, this, nullptr);
    m_application->HelpFile().HelpViewer({});
    m_application->Document().SelectionTeller({});
    m_application->Document().MomentTeller({});
}

bool frmMain::Load() {
    LoadFirstHalf();
    try {
        LoadSecondHalf();
        return true;
    } catch (const RaisedError& failure) {
        m_splash.reset();
        Tell(failure.Description(), MessageIcon::Stop, "ERROR");
        return false;
    }
}

void frmMain::LoadFirstHalf() {
    FailureRegion region;
    region.Run([this] { ShowSplash(); });
    region.Run([this] { SetCaptions(); });
    setWindowIcon(QIcon(ToQt(m_application->AppIcon().string())));
    m_place.Restore(*this, {kWidth, kHeight});
    region.Run([this] { m_application->Project().SetCreationTime(); });
    setWindowTitle(ToQt(WindowCaption(m_application->BrandLabel(), "")));
    g_ProjectDirty = false;
    m_application->Document().ProjectFile({});
    ShowFileStatus();
    region.Run([this] { SetWebItems(); });
}

void frmMain::ShowSplash() {
    m_splash = std::make_unique<frmSplash>(m_application->ProgramFile(kSplashPicture), this);
    m_splash->Appear();
    auto* timer = new QTimer(this);
    timer->setObjectName("tmrSplash");
    timer->setSingleShot(true);
    connect(timer, &QTimer::timeout, this, [this] { m_splash.reset(); });
    timer->start(kSplashMilliseconds);
}

void frmMain::Appear(std::function<void()> appeared) {
    m_appeared = std::move(appeared);
    const auto appear = [this] {
        if (!isVisible()) {
            show();
        }
    };
    if (m_splash == nullptr) {
        appear();
        return;
    }
    // Behind the click's own routine, since the splash does not outlive it.
    connect(m_splash.get(), &frmSplash::Clicked, this, appear, Qt::QueuedConnection);
    QTimer::singleShot(std::max(0, kSplashSight - m_splash->SeenFor()), this, appear);
}

void frmMain::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (std::exchange(m_hasAppeared, true)) {
        return;
    }
    // Behind the window, which then stands there for what still works.
    const auto behind = [this] {
        m_splash.reset();
        RunEvent([this] { TellWhatIsMissing(); });
        bool restored = false;
        RunEvent([&] { restored = OfferLost(); });
        if (restored) {
            m_appeared = {};  // a file to open would drop it again
        }
        if (const auto appeared = std::exchange(m_appeared, {})) {
            RunEvent(appeared);
        }
    };
    QMetaObject::invokeMethod(this, behind, Qt::QueuedConnection);
}

void frmMain::LoadSecondHalf() {
    InitializeOutlookBar();
    InitializePanels();
    NoteUnoffered(ChoicesFrom::Defaults);
    m_application->LoadMotorConversions();
    RebuildRecentMenu();
    EnableReportCommands(false);
    m_editMenu = std::make_unique<CEditMenu>(*m_platform);
    m_editWatch = std::make_unique<EditWatch>([this] { RefreshEditMenu(); });
    RefreshEditMenu();
}

void frmMain::TellWhatIsMissing() {
    const std::string missing = m_application->Catalogue().WhatIsMissing();
    if (!missing.empty()) {
        Tell(missing + "\r\nWhat needs it will not work.", MessageIcon::Exclamation, ProductName());
    }
}

void frmMain::InitializePanels() {
    InitializeProjPanel();
    InitializePwrSysPanel();
    ShowPanel(*m_panProject, kProject);
}

void frmMain::InitializeProjPanel() {
    FailureRegion region;
    region.Run([this] { m_application->Project().Display(*m_panProject); });
    if (region.Pending()) {
        Tell("An error occured while initializing the project information panel.", MessageIcon::None);
    }
}

void frmMain::InitializePwrSysPanel() {
    FailureRegion region;
    Catalogue& catalogue = m_application->Catalogue();
    const bool connected = region.Run([&] { m_panPwrSys->Connections(catalogue.Connections()); });
    if (!connected) {
        throw RaisedError(kConnectionOptionsError, "frmMain.InitializePwrSysPanel",
                          "Error initializing connection options in power system panel.");
    }
    region.Run([&] { m_panPwrSys->Voltages(catalogue.VoltagesLL()); });
    if (region.Pending()) {
        Tell("An error occured while filling voltage selections.\r\nDefault values have been used.",
             MessageIcon::None);
        region.Clear();
    }
    region.Run([this] { m_application->PowerSystem().Display(*m_panPwrSys, m_application->IsMetric()); });
    if (region.Pending()) {
        Tell("An error occured while initializing the power system information.", MessageIcon::None);
    }
}

void frmMain::PwrSysUnitsChanged(bool metric) {
    m_panPwrSys->MetricUnits(metric);
}

std::int32_t frmMain::SelectedStep() const {
    return m_panLoadProfile->SelectedStep();
}

std::int32_t frmMain::Phases() const {
    return m_panPwrSys->Phases();
}

void frmMain::DisplayNewLoad(std::int32_t stepNumber, std::int32_t loadId) {
    m_panLoadProfile->DisplayNewLoad(stepNumber, loadId);
    m_panLoadProfile->SelectLoad(stepNumber, loadId);
}

void frmMain::ProjectChanged() {
    g_ProjectDirty = true;
    ShowFileStatus();
}

void frmMain::SideBarClicked(std::int32_t index) {
    m_panProject->Store(m_application->Project());
    m_panPwrSys->Store(m_application->PowerSystem());
    KeepStored();
    ShowCaption();
    const std::string name = m_panProject->ProjectName();
    if (index == kProject) {
        ShowPanel(*m_panProject, index);
        EnableReportCommands(false);
    } else if (index == kPowerSystem) {
        m_panPwrSys->ProjectName(name);
        ShowPanel(*m_panPwrSys, index);
        EnableReportCommands(false);
    } else if (index == kLoadProfile) {
        m_panLoadProfile->ProjectName(name);
        ShowPanel(*m_panLoadProfile, index);
        EnableReportCommands(false);
    } else if (index == kRecommend) {
        m_panRecommend->ProjectName(name);
        Recommend();
    }
}

void frmMain::SwitchTo(std::int32_t index) {
    if (!PanelsAreReady()) {
        return;
    }
    if (index != kRecommend) {
        SideBarClicked(index);
        return;
    }
    FailureRegion region;
    if (!region.Run([this] { SideBarClicked(kRecommend); })) {
        TellWhyNotSized(*region.Pending());
    }
}

void frmMain::TellWhyNotSized(const RaisedError& failure) {
    Tell(m_application->Document().WhyNotSized(failure), MessageIcon::Exclamation, ProductName());
}

bool frmMain::PanelsAreReady() {
    EntryField* bad = m_panPwrSys->PrepareToStore();
    if (bad == nullptr) {
        return true;
    }
    if (m_panels->currentWidget() != m_panPwrSys) {
        ShowPanel(*m_panPwrSys, kPowerSystem);
        EnableReportCommands(false);
    }
    bad->SelectAllText();
    return false;
}

void frmMain::Recommend() {
    Document& document = m_application->Document();
    if (!document.HasLoads()) {
        m_platform->Beep();
        Tell(kNothingToSize, MessageIcon::Exclamation);
        return;
    }
    const WaitCursor busy;
    document.Size();  // before its panel is shown, so that a run that fails changes nothing
    ShowPanel(*m_panRecommend, kRecommend);
    EnableReportCommands(true);
    m_panRecommend->Designer(document.Designer());
    m_panRecommend->DisplayChosenSets();
}

void frmMain::ShowPanel(QWidget& panel, std::int32_t index) {
    m_panels->setCurrentWidget(&panel);
    m_barMain->ShowCurrent(index);
    // The focus goes where the next entry is.
    for (QWidget* next = panel.nextInFocusChain(); next != nullptr && panel.isAncestorOf(next);
         next = next->nextInFocusChain()) {
        if ((next->focusPolicy() & Qt::TabFocus) != 0 && next->isEnabled() && next->isVisibleTo(&panel)) {
            next->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

void frmMain::ShowProjectPanel() {
    ShowHeadings();
    m_panRecommend->ClearReport();
    m_panLoadProfile->ShowBeginning();
    ShowPanel(*m_panProject, kProject);
    EnableReportCommands(false);
}

void frmMain::ShowHeadings() {
    const std::string name = m_panProject->ProjectName();
    m_panPwrSys->ProjectName(name);
    m_panLoadProfile->ProjectName(name);
    m_panRecommend->ProjectName(name);
}

void frmMain::ShowCaption() {
    setWindowTitle(ToQt(WindowCaption(m_application->BrandLabel(), m_panProject->ProjectName())));
}

std::string frmMain::ProductName() const {
    return std::string(WordsOf(m_application->BrandLabel()).productName);
}

void frmMain::Tell(const std::string& text, MessageIcon icon, const std::string& title) {
    m_platform->ShowMessage(this, {.text = text, .icon = icon, .title = title});
}

void frmMain::closeEvent(QCloseEvent* event) {
    bool leave = true;
    RunEvent([&] {
        leave = !FocusIsHeld(*this);
        if (leave && g_ProjectDirty) {
            leave = m_platform->ShowMessage(this, {.text = "The project has been changed.\r\nExit anyway?",
                                                   .icon = MessageIcon::Question,
                                                   .title = ProductName(),
                                                   .buttons = MessageButtons::YesNo}) == MessageAnswer::Yes;
            m_letGo = leave;
        }
    });
    if (leave) {
        KeepDropped(WhatIsDropped());
        m_recovery.Forget();
        m_place.Keep(*this);
        m_errLog.reset();
        EndAnalysis();
        m_platform->CloseHelp();
        event->accept();
    } else {
        event->ignore();
    }
}

}  // namespace genvara
