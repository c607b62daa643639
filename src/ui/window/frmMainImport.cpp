// The main window's import of loads from tables.

#include <QFileInfo>
#include <QStatusBar>
#include <algorithm>

#include "ErrorNumbers.h"
#include "ImportTable.h"
#include "ProjectSource.h"
#include "TableText.h"
#include "Texts.h"
#include "WaitCursor.h"
#include "frmAnalysis.h"
#include "frmErrLog.h"
#include "frmImport.h"
#include "frmMain.h"
#include "frmSplash.h"
#include "panLoadProfile.h"

namespace genvara {
namespace {

constexpr const char* kTableFilter = "Tables (*.csv;*.tsv;*.txt)|*.csv;*.tsv;*.txt|All Files (*.*)|*.*";
constexpr std::int32_t kLoadProfile = 2;  // of the side bar

/// The user's decimal sign, if it is one that numbers of tables have.
std::optional<char> UsualDecimal() {
    const std::string sign = DecimalSeparator();
    return sign == "." || sign == "," ? std::optional(sign.front()) : std::nullopt;
}

/// Whether a text was meant to be a table of loads: some heading of it is known, or it has lines and could
/// not be read.
bool IsTableOfLoads(const ImportedTable& table, const std::string& text) {
    if (table.columns.empty()) {
        return ToQt(text).trimmed().contains('\n');
    }
    return std::ranges::any_of(table.columns,
                               [](const TableColumn& column) { return !column.meaning.fields.empty(); });
}

}  // namespace

void frmMain::ImportLoads() {
    try {
        const std::string file = m_platform->OpenFileName(
            this,
            {.title = "Import Loads", .initialFolder = m_application->ProjectPath(), .filter = kTableFilter});
        FileSource table(file, "frmMain::ImportLoads");
        PreviewTable(TableBytes(table), QFileInfo(ToQt(file)).fileName(), false);
    } catch (const RaisedError& failure) {
        if (failure.Number() != errors::kDialogCancelled) {
            Tell("The table cannot be imported: " + failure.Description(), MessageIcon::Exclamation,
                 ProductName());
        }
    }
}

void frmMain::PasteTable(const QString& text) {
    try {
        PreviewTable(FromQt(text), tr("the clipboard"), true);
    } catch (const RaisedError& failure) {
        Tell("The table cannot be imported: " + failure.Description(), MessageIcon::Exclamation,
             ProductName());
    }
}

void frmMain::PreviewTable(const std::string& bytes, const QString& origin, bool isPasted) {
    const std::optional<StudyProject> project = PanelsAreReady() ? ProjectAsItStands() : std::nullopt;
    if (!project) {
        return;
    }
    const EntryRules rules = m_application->Catalogue().Rules();
    const ImportedTable table = [&] {
        const WaitCursor busy;
        return ReadLoadTable(
            bytes, project->loadProfile, project->powerSystem, rules,
            {.stepAtHand = SelectedStep(), .usualDecimal = UsualDecimal(), .shown = EntryNumbers()});
    }();
    if (isPasted && !IsTableOfLoads(table, bytes)) {
        statusBar()->showMessage(tr("The clipboard holds no loads."));
        return;
    }
    frmImport dialog(table, origin, this);
    if (dialog.exec() == QDialog::Accepted && table.CanBeAdded()) {
        TakeTable(table);
    }
}

void frmMain::TakeTable(const ImportedTable& table) {
    SwitchTo(kLoadProfile);
    const WaitCursor busy;
    const std::string name = ImportName(table);
    CLoadProfile& profile = m_application->LoadProfile();
    ChangeProject(ToQt(name), [&] { AddTable(table, profile); });
    const std::int32_t last = table.rows.back().step;
    m_panLoadProfile->SelectLoad(last, std::prev(profile.LoadStep(last).end())->ID());
    statusBar()->showMessage(tr("%1: done. Ctrl+Z takes it back.").arg(ToQt(name)));
}

}  // namespace genvara
