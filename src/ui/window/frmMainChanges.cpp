// The main window's changes of the project: what is entered on panels, taking back, making again.

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <algorithm>
#include <array>
#include <string_view>

#include "FailureRegion.h"
#include "Globals.h"
#include "LoadChanges.h"
#include "Panel.h"
#include "Texts.h"
#include "frmErrLog.h"
#include "frmMain.h"
#include "frmSplash.h"
#include "panLoadProfile.h"
#include "panProject.h"
#include "panPwrSys.h"
#include "panRecommend.h"

namespace genvara {
namespace {

/// Controls of the panels and the strings that they are known by.
struct ControlName {
    std::string_view control;
    std::int32_t string;
};
constexpr std::array<ControlName, 21> kControlNames{
    {{"txtName", 130},      {"txtCustomer", 131},    {"txtDescription", 132},  {"txtUserName", 133},
     {"cboVolts", 140},     {"cboConn", 141},        {"optFreq60", 143},       {"optFreq50", 143},
     {"optDiesel", 144},    {"optGas", 144},         {"optLP", 144},           {"optGasoline", 144},
     {"optAnyFuel", 144},   {"cboAltTempRise", 150}, {"txtParallelSets", 151}, {"txtAltitude", 152},
     {"txtAmbTemp", 153},   {"txtMaxVoltDip", 154},  {"txtMaxFreqDip", 155},   {"chkEnableFreqDip", 155},
     {"chkEnableHarm", 156}}};
/// What is typed is kept after so long at the latest, with the time that the writing takes [ms].
constexpr int kKeepTyped = 1000;
constexpr std::int32_t kHarmonicsString = 156;  // of the field that is left

std::string NameOfEdit(const QWidget& control) {
    const std::string name = FromQt(control.objectName());
    const auto* const known = std::ranges::find(kControlNames, name, &ControlName::control);
    const std::int32_t string = known == kControlNames.end() ? kHarmonicsString : known->string;
    return "Edit " + FromQt(Caption(string));
}

bool IsText(const QWidget* control) {
    return qobject_cast<const QLineEdit*>(control) != nullptr ||
           qobject_cast<const QPlainTextEdit*>(control) != nullptr;
}

/// Whether a text control has something of its own to take back, or to make again.
bool HasOwnUndo(const QObject* control, bool redo) {
    if (const auto* line = qobject_cast<const QLineEdit*>(control)) {
        return redo ? line->isRedoAvailable() : line->isUndoAvailable();
    }
    const auto* text = qobject_cast<const QPlainTextEdit*>(control);
    return text != nullptr &&
           (redo ? text->document()->isRedoAvailable() : text->document()->isUndoAvailable());
}

/// What was entered is a change by now, which is taken back as a whole.
void ForgetOwnUndo(QWidget& control) {
    if (auto* line = qobject_cast<QLineEdit*>(&control)) {
        const int cursor = line->cursorPosition();
        line->setText(line->text());
        line->setCursorPosition(cursor);
    } else if (auto* text = qobject_cast<QPlainTextEdit*>(&control)) {
        text->document()->clearUndoRedoStacks();
    }
}

/// A caption of a menu: a single ampersand would mark a key, and a long name would make it wide.
QString ItemCaption(const QString& deed, const std::optional<std::string>& change, const QWidget& window) {
    constexpr int kWidest = 320;  // pixels
    if (!change) {
        return deed;
    }
    const QString name = window.fontMetrics().elidedText(ToQt(*change).simplified(), Qt::ElideRight, kWidest);
    return deed + " " + QString(name).replace('&', "&&");
}

}  // namespace

void frmMain::NoteEdit(const Panel& panel) {
    QWidget* control = panel.LastEdited();
    if (m_edited != control) {
        KeepEdits();
    }
    if (control != nullptr) {
        m_edited = control;
        m_application->Document().Touch();
        if (!IsText(control)) {
            KeepEdits();
        } else if (!m_recoveryTimer->isActive()) {
            m_recoveryTimer->start(kKeepTyped);
        }
    }
    ShowFileStatus();
}

void frmMain::KeepEdits() {
    if (m_edited == nullptr) {
        return;
    }
    if (m_panProject->isAncestorOf(m_edited)) {
        m_panProject->Store(m_application->Project());
    } else {
        m_panPwrSys->StoreWhatHolds(m_application->PowerSystem());
    }
    KeepStored();
    ShowFileStatus();
}

void frmMain::KeepEditsBehind(const QWidget* next) {
    const bool menu =
        qobject_cast<const QMenu*>(next) != nullptr || qobject_cast<const QMenuBar*>(next) != nullptr;
    if (m_edited != nullptr && next != nullptr && next != m_edited && !menu) {
        KeepEdits();
    }
}

void frmMain::KeepStored() {
    if (QWidget* edited = m_edited) {
        m_edited = nullptr;
        m_application->Document().Keep(NameOfEdit(*edited));
        ForgetOwnUndo(*edited);
    } else {
        m_application->Document().Settle();
    }
}

void frmMain::Change(const std::string& name, const std::function<void()>& change) {
    KeepEdits();
    m_application->Document().Change(name, change);
}

void frmMain::ChangeProject(const QString& name, const std::function<void()>& change) {
    if (!PanelsAreReady()) {
        return;
    }
    m_panProject->Store(m_application->Project());
    m_panPwrSys->Store(m_application->PowerSystem());
    KeepStored();
    Document& document = m_application->Document();
    const ProjectMoment before = document.Moment();
    const auto show = [&] {
        // What the entry forms and the delete commands note of themselves.
        g_ProjectDirty = g_ProjectDirty || HasOtherLoads(before, document.Moment());
        ShowRecords({.name = {}, .project = true, .powerSystem = true, .loadProfile = true, .place = {}});
    };
    try {
        document.Change(FromQt(name), change);
    } catch (...) {
        show();
        throw;
    }
    show();
    RefreshRecommendation();
}

bool frmMain::GaveUpEdit() {
    const QPointer<QWidget> edited = m_edited;
    if (edited == nullptr) {
        return false;
    }
    auto* field = qobject_cast<EntryField*>(edited);
    const bool bad = field != nullptr && field->InError();
    KeepEdits();
    if (!bad) {
        return false;
    }
    ShowRecords({.name = {}, .project = true, .powerSystem = true, .loadProfile = false, .place = {}});
    return true;
}

void frmMain::Undo() {
    if (GaveUpEdit()) {
        return;
    }
    if (const auto undone = m_application->Document().Undo()) {
        ShowUndone("Undone", *undone);
    }
}

void frmMain::Redo() {
    KeepEdits();
    if (const auto redone = m_application->Document().Redo()) {
        ShowUndone("Redone", *redone);
    }
}

void frmMain::ShowUndone(const char* done, const Document::Undone& undone) {
    ShowRecords(undone);
    ShowPanelOf(undone);
    RefreshRecommendation();
    statusBar()->showMessage(QString("%1: %2.").arg(done, ToQt(undone.name)));
}

void frmMain::ShowRecords(const Document::Undone& changed) {
    FailureRegion region;
    if (changed.project) {
        region.Run([this] { m_application->Project().Display(*m_panProject); });
    }
    if (changed.powerSystem) {
        region.Run([this] { m_application->PowerSystem().Display(*m_panPwrSys, m_application->IsMetric()); });
        NoteUnoffered(m_choicesFrom);
    }
    if (changed.loadProfile) {
        m_panLoadProfile->ShowProfile(changed.place);
    }
    m_application->Document().Settle();  // ticks are stored as they are shown
    ShowCaption();
    ShowHeadings();
    ShowFileStatus();
}

void frmMain::ShowPanelOf(const Document::Undone& changed) {
    const std::array<std::pair<QWidget*, bool>, 3> panels{{{m_panProject, changed.project},
                                                           {m_panPwrSys, changed.powerSystem},
                                                           {m_panLoadProfile, changed.loadProfile}}};
    const QWidget* shown = m_panels->currentWidget();
    std::int32_t first = -1;
    for (std::int32_t index = 0; const auto& [panel, holds] : panels) {
        if (holds && panel == shown) {
            return;
        }
        first = holds && first < 0 ? index : first;
        ++index;
    }
    if (first >= 0 && shown != m_panRecommend) {
        ShowPanel(*panels.at(static_cast<std::size_t>(first)).first, first);
    }
}

void frmMain::RefreshRecommendation() {
    constexpr std::int32_t kLoadProfile = 2;
    constexpr std::int32_t kRecommend = 3;
    if (m_panels->currentWidget() != m_panRecommend) {
        return;
    }
    if (m_application->Document().HasLoads()) {
        SwitchTo(kRecommend);
    } else {
        ShowPanel(*m_panLoadProfile, kLoadProfile);
        EnableReportCommands(false);
    }
}

void frmMain::ShowUndo() {
    const Document& document = m_application->Document();
    const auto show = [this](const char* command, const QString& deed,
                             const std::optional<std::string>& change) {
        Command(command)->setText(ItemCaption(deed, change, *this));
        Command(command)->setEnabled(change.has_value());
    };
    show("mnuEditUndo", tr("&Undo"),
         m_edited != nullptr ? std::optional(NameOfEdit(*m_edited)) : document.UndoName());
    show("mnuEditRedo", tr("&Redo"), document.RedoName());
}

bool frmMain::GoesBeforeOwnUndo(QObject* watched, QEvent& event) {
    if (event.type() != QEvent::ShortcutOverride) {
        return false;
    }
    auto* control = qobject_cast<QWidget*>(watched);
    const auto& key = static_cast<QKeyEvent&>(event);
    const bool redo = key.matches(QKeySequence::Redo);
    if (control == nullptr || control->window() != this || !IsText(control) ||
        !(redo || key.matches(QKeySequence::Undo)) || HasOwnUndo(control, redo)) {
        return false;
    }
    event.ignore();
    return true;
}

}  // namespace genvara
