// The main window's commands on steps and loads of the load profile.

#include <QAction>
#include <QStackedWidget>
#include <QStatusBar>
#include <array>

#include "ProfileFinder.h"
#include "frmErrLog.h"
#include "frmMain.h"
#include "frmSplash.h"
#include "panLoadProfile.h"

namespace genvara {
namespace {

/// Commands that go to the tree of the load profile, and to it alone.
constexpr std::array<const char*, 4> kProfileCommands{"mnuEditCutLoads", "mnuEditCopyLoads",
                                                      "mnuEditPasteLoads", "mnuEditDuplicate"};

}  // namespace

void frmMain::BindProfileCommands() {
    // Their keys are those of text fields, tables and reports, too.
    for (const char* command : kProfileCommands) {
        Command(command)->setShortcutContext(Qt::WidgetShortcut);
        m_panLoadProfile->AddCommand(*Command(command));
    }
}

void frmMain::RefreshProfileCommands() {
    const bool active = m_panels->currentWidget() == m_panLoadProfile && m_panLoadProfile->TreeIsActive();
    const bool any = active && m_panLoadProfile->SelectedPlace();
    for (const char* command : kProfileCommands) {
        Command(command)->setEnabled(any);
    }
    Command("mnuEditPasteLoads")->setEnabled(active);
    for (const char* command : {"mnuEditFind", "mnuEditFindNext", "mnuEditFindPrevious"}) {
        Command(command)->setEnabled(m_panels->currentWidget() == m_panLoadProfile);
    }
}

void frmMain::CutLoads() {
    m_panLoadProfile->Cut();
}

void frmMain::CopyLoads() {
    m_panLoadProfile->Copy();
}

void frmMain::PasteLoads() {
    m_panLoadProfile->Paste();
}

void frmMain::DuplicateLoads() {
    m_panLoadProfile->Duplicate();
}

void frmMain::FindLoads() {
    m_panLoadProfile->Finder().Open();
}

void frmMain::FindNext() {
    m_panLoadProfile->Finder().Next();
}

void frmMain::FindPrevious() {
    m_panLoadProfile->Finder().Previous();
}

}  // namespace genvara
