// The main window's menus, toolbar, side bar and panels, made from the command tables.

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <iterator>

#include "CommandTable.h"
#include "DialogKeys.h"
#include "FailureRegion.h"
#include "FieldCheck.h"
#include "FileStatus.h"
#include "Globals.h"
#include "LastChance.h"
#include "Pictures.h"
#include "ProfileStatus.h"
#include "Texts.h"
#include "ctlSideBar.h"
#include "frmErrLog.h"
#include "frmMain.h"
#include "frmSplash.h"
#include "panLoadProfile.h"
#include "panProject.h"
#include "panPwrSys.h"
#include "panRecommend.h"

namespace genvara {
namespace {

// Distances between bar and panels: 40 and 80 twips of a fifteenth of a pixel.
constexpr int kBarGap = 3;
constexpr int kPanelGap = 5;
constexpr int kToolbarIcon = 24;

/// Keys of the menus' titles.
constexpr std::string_view kMenuKeys = "FETH";

constexpr std::int32_t kOutlookBarError = 31;
constexpr std::int32_t kSendString = 57;

/// Web pages of a brand's maker.
struct WebPages {
    const char* maker;
    const char* product;
};
constexpr std::array<WebPages, 2> kWebPages{
    {{"https://www.morvane.example/", "https://www.morvane.example/genvara/"},
     {"https://www.caldrix.example/", "https://www.caldrix.example/ohmvane/"}}};

}  // namespace

void frmMain::BuildMenus() {
    for (const MenuTitle& title : kMenus) {
        QMenu* menu = menuBar()->addMenu(QString());
        menu->setObjectName(title.name);
        m_menus[title.name] = menu;
    }
    for (const auto& [name, parent] :
         {std::pair{"mnuFileSend", "mnuFile"}, std::pair{"mnuHelpWeb", "mnuHelp"}}) {
        auto* menu = new QMenu(m_menus.at(parent));
        menu->setObjectName(name);
        m_menus[name] = menu;
    }
    for (const MenuCommand& command : kMenuCommands) {
        if (m_menus.contains(command.menu) && m_menus.at(command.menu)->parent() != menuBar() &&
            m_menus.at(command.menu)->isEmpty()) {
            // A submenu stands where its first command does.
            QMenu* menu = m_menus.at(command.menu);
            static_cast<QMenu*>(menu->parent())->addMenu(menu);
        }
        AddCommand(command);
    }
    for (std::size_t index = 0; index < RecentFiles::kMost; ++index) {
        Command("mnuFileMRU" + std::to_string(index))->setVisible(false);
    }
    Command("mnuFileSep4")->setVisible(false);
    connect(m_menus.at("mnuEdit"), &QMenu::aboutToShow, this, Event([this] { RefreshEditMenu(); }));
}

void frmMain::AddCommand(const MenuCommand& command) {
    auto* action = new QAction(this);
    action->setObjectName(command.name);
    m_commands[command.name] = action;
    if (command.caption == nullptr) {
        action->setSeparator(true);
    } else {
        action->setText(command.caption);
        action->setIconVisibleInMenu(true);
        if (*command.picture != '\0') {
            action->setIcon(Picture(command.picture));
        }
        if (*command.shortcut != '\0') {
            action->setShortcuts(QKeySequence::listFromString(command.shortcut));
        }
        const std::string name = command.name;
        connect(action, &QAction::triggered, this, Event([this, name] { Run(name); }));
    }
    if (m_menus.contains(command.menu)) {
        m_menus.at(command.menu)->addAction(action);
    } else {
        addAction(action);  // reached by its key alone
    }
}

void frmMain::BuildToolbar() {
    m_toolbar = addToolBar(tr("Toolbar"));
    m_toolbar->setObjectName("tbrMain");
    m_toolbar->setMovable(false);
    m_toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    m_toolbar->setIconSize({kToolbarIcon, kToolbarIcon});
    for (const ToolButton& entry : kToolButtons) {
        if (entry.gap) {
            m_toolbar->addSeparator();
        }
        QAction* button = m_toolbar->addAction(Picture(entry.picture), {});
        button->setObjectName(entry.key);
        m_toolButtons[entry.key] = button;
        const std::string key = entry.key;
        connect(button, &QAction::triggered, this, Event([this, key] { ToolClicked(key); }));
        m_toolbar->widgetForAction(button)->setFocusPolicy(Qt::NoFocus);
    }
    statusBar()->setObjectName("sbrMain");
    m_profileStatus =
        new ProfileStatus(*statusBar(), m_application->LoadProfile(), m_application->PowerSystem());
    m_fileStatus = new FileStatus;
    statusBar()->addPermanentWidget(m_fileStatus);
}

void frmMain::BuildPanels() {
    m_barMain = new ctlSideBar("barMain");
    m_panels = new QStackedWidget;
    m_panProject = new panProject(*m_platform);
    m_panPwrSys = new panPwrSys(*m_platform, m_application->PowerSystem());
    m_panLoadProfile = new panLoadProfile(*m_platform,
                                          {.profile = m_application->LoadProfile(),
                                           .site = m_application->PowerSystem(),
                                           .catalogue = m_application->Catalogue()},
                                          *this);
    m_panRecommend =
        new panRecommend(*m_platform, *m_application, m_log,
                         {.enableExport = [this](bool on) { EnableExport(on); },
                          .enableReport = [this](bool on) { EnableReport(on); },
                          .refusesOutput = [this](const std::string& file) { return RefusesOutput(file); }});
    for (Panel* panel :
         std::initializer_list<Panel*>{m_panProject, m_panPwrSys, m_panLoadProfile, m_panRecommend}) {
        MarkMnemonics(*panel, kMenuKeys);
        m_panels->addWidget(panel);
        connect(panel, &Panel::Edited, this, [this, panel] { NoteEdit(*panel); });
    }
    auto* centre = new QWidget;
    auto* line = new QHBoxLayout(centre);
    line->setContentsMargins(0, kBarGap, kPanelGap, kPanelGap);
    line->setSpacing(kPanelGap);
    line->addWidget(m_barMain);
    line->addWidget(m_panels, 1);
    setCentralWidget(centre);
    connect(m_barMain, &ctlSideBar::ItemClicked, this, Event([this](std::int32_t index) {
                if (!FocusIsHeld(*this)) {
                    SwitchTo(index);
                }
            }));
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { KeepEditsBehind(now); });
    connect(m_panLoadProfile, &panLoadProfile::FiguresChanged, this, [this] { m_profileStatus->Refresh(); });
    connect(m_panLoadProfile, &panLoadProfile::Told, this,
            [this](const QString& sentence) { statusBar()->showMessage(sentence); });
    connect(m_panLoadProfile, &panLoadProfile::PlaceChanged, this, [this] { RefreshProfileCommands(); });
    connect(m_panLoadProfile, &panLoadProfile::TablePasted, this,
            Event([this](const QString& text) { PasteTable(text); }));
    BindProfileCommands();
    m_recoveryTimer = new QTimer(this);
    m_recoveryTimer->setSingleShot(true);
    connect(m_recoveryTimer, &QTimer::timeout, this, [this] { FeedRecovery(); });
    m_application->Document().MomentTeller([this] {
        FeedRecovery();
        m_profileStatus->Refresh();  // the site's voltage may be another
    });
    m_application->Document().SelectionTeller([this] { return m_panLoadProfile->SelectedPlace(); });
    connect(m_panProject, &panProject::ProjectNameChanged, this, [this] { ShowCaption(); });
    connect(m_panPwrSys, &panPwrSys::Chosen, this, [this](SiteChoice choice) {
        std::erase_if(m_unoffered, [choice](const UnofferedChoice& made) { return made.choice == choice; });
        ShowNotices();
    });
    connect(m_panRecommend, &panRecommend::AnalysisAsked, this, [this] { ShowAnalysis(); });
    m_errLog = std::make_unique<frmErrLog>(m_log);
}

void frmMain::BuildShortcuts() {
    std::int32_t index = 0;
    for (const BarEntry& entry : kBarEntries) {
        auto* shortcut = new QShortcut(QKeySequence(QString(entry.shortcut)), this);
        connect(shortcut, &QShortcut::activated, this, Event([this, index] {
                    if (!FocusIsHeld(*this)) {
                        SwitchTo(index);
                    }
                }));
        ++index;
    }
}

void frmMain::SetCaptions() {
    for (const MenuTitle& title : kMenus) {
        m_menus.at(title.name)->setTitle(Caption(title.string));
    }
    m_menus.at("mnuFileSend")->setTitle(Caption(kSendString));
    for (const MenuCommand& command : kMenuCommands) {
        if (command.string != 0) {
            Command(command.name)->setText(Caption(command.string));
        }
    }
    for (const ToolButton& entry : kToolButtons) {
        QAction* button = m_toolButtons.at(entry.key);
        button->setText(Caption(entry.tip));
        button->setToolTip(Caption(entry.tip));
    }
}

void frmMain::SetWebItems() {
    const bool first = m_application->BrandLabel() == brand::kMorvane;
    m_menus.at("mnuHelpWeb")->setTitle(ToQt(WordsOf(first ? brand::kMorvane : brand::kCaldrix).webCaption));
    const WebPages& pages = kWebPages[first ? 0 : 1];
    Command("mnuHelpWebSite1")->setText(pages.maker);
    Command("mnuHelpWebSite2")->setText(pages.product);
}

void frmMain::InitializeOutlookBar() {
    FailureRegion region;
    std::vector<QIcon> icons;
    icons.reserve(std::size(kBarEntries));
    for (const BarEntry& entry : kBarEntries) {
        icons.push_back(Picture(entry.picture));
    }
    m_barMain->LargeIcons(std::move(icons));
    std::int32_t index = 0;
    std::vector<QString> keys;
    for (const BarEntry& entry : kBarEntries) {
        keys.push_back(QKeySequence(entry.shortcut).toString(QKeySequence::NativeText));
        region.Run([&] { m_barMain->AddItem(entry.key, FromQt(Caption(entry.title)), index, index); });
        ++index;
    }
    m_barMain->Keys(std::move(keys));
    if (region.Pending()) {
        throw RaisedError(kOutlookBarError, "frmMain.InitializeOutlookBar",
                          "Error adding buttons to the outlook bar.");
    }
}

void frmMain::EnableReportCommands(bool enabled) {
    EnableReport(enabled);
    EnableExport(enabled);
}

void frmMain::EnableReport(bool enabled) {
    Command("mnuFileSaveReport")->setEnabled(enabled);
    Command("mnuFileSaveReportPdf")->setEnabled(enabled);
    Command("mnuFilePrint")->setEnabled(enabled);
    m_toolButtons.at("butPrint")->setEnabled(enabled);
}

void frmMain::EnableExport(bool enabled) {
    Command("mnuFileExport")->setEnabled(enabled);
    m_toolButtons.at("butExport")->setEnabled(enabled);
}

}  // namespace genvara
