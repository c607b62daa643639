// What the main window does lest anything get lost: it keeps what is on screen, and what commands drop.

#include <QStatusBar>
#include <QTimer>
#include <memory>
#include <utility>

#include "ErrorNumbers.h"
#include "Globals.h"
#include "KeptWords.h"
#include "ShownProject.h"
#include "Texts.h"
#include "WaitCursor.h"
#include "frmErrLog.h"
#include "frmMain.h"
#include "frmMainLetGo.h"
#include "frmRecover.h"
#include "frmSplash.h"
#include "panRecommend.h"

namespace genvara {

ProjectMoment frmMain::MomentOnScreen() const {
    ProjectMoment moment = m_application->Document().Moment();
    auto project = std::make_shared<CProject>(*moment.project);
    m_panProject->Store(*project);
    auto site = std::make_shared<CPwrSys>(*moment.powerSystem);
    m_panPwrSys->StoreWhatHolds(*site);
    moment.project = std::move(project);
    moment.powerSystem = std::move(site);
    return moment;
}

KeptOrigin frmMain::Origin() const {
    const Document& document = m_application->Document();
    return {.file = document.StampedFile(), .stamp = document.Stamp()};
}

void frmMain::FeedRecovery() {
    m_recoveryTimer->stop();
    const Document& document = m_application->Document();
    if (document.IsChanged()) {
        m_recovery.Keep(m_edited == nullptr ? document.Moment() : MomentOnScreen(), Origin());
    } else {
        m_recovery.Forget();
    }
}

std::optional<frmMain::Dropped> frmMain::WhatIsDropped() const {
    if (m_letGo || !m_application->Document().IsChanged()) {
        return std::nullopt;
    }
    return Dropped{.moment = MomentOnScreen(), .origin = Origin()};
}

void frmMain::KeepDropped(const std::optional<Dropped>& dropped) {
    if (dropped) {
        m_recovery.Drop(dropped->moment, dropped->origin);
    }
}

std::filesystem::path frmMain::Rescue() {
    return m_recovery.KeepForGood(MomentOnScreen(), Origin());
}

bool frmMain::OfferLost() {
    std::vector<KeptProject> lost = TakeOverLost(m_recovery.Folder());
    if (lost.empty()) {
        return false;
    }
    const bool restored = ChooseKept(std::move(lost), true);
    if (!restored) {
        statusBar()->showMessage(tr("What was not restored stays under File > Recover."));
    }
    return restored;
}

void frmMain::RecoverProject() {
    m_recovery.Finish();
    (void)ChooseKept(DroppedProjects(m_recovery.Folder()), false);
}

bool frmMain::ChooseKept(std::vector<KeptProject> kept, bool lost) {
    frmRecover dialog(
        *m_platform, std::move(kept), lost,
        [this](const KeptProject& project) {
            return WordsOf(project, m_application->Defaults(), m_application->Catalogue());
        },
        this);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    const MessageAnswer answer = g_ProjectDirty ? AskForChanges() : MessageAnswer::No;
    if (answer == MessageAnswer::Cancel || (answer == MessageAnswer::Yes && !SaveBeforeLeaving())) {
        return false;
    }
    const LetGo wish(*this, g_ProjectDirty && answer == MessageAnswer::No);
    return RestoreKept(*dialog.Chosen());
}

bool frmMain::RestoreKept(const KeptProject& kept) {
    const auto dropped = WhatIsDropped();
    try {
        const WaitCursor busy;
        ShownProject shown(*m_application, *m_panProject, *m_panPwrSys, *m_panLoadProfile);
        m_application->Document().Recover(kept.project, kept.origin.file, kept.origin.stamp, shown);
    } catch (const RaisedError& failure) {
        Tell("The project cannot be restored: " + failure.Description(), MessageIcon::Exclamation,
             ProductName());
        return false;
    }
    KeepDropped(dropped);
    m_edited = nullptr;
    g_ProjectDirty = true;  // nobody has saved it
    NoteUnoffered(ChoicesFrom::File);
    ShowProjectPanel();
    m_notSaved.clear();
    ShowFileStatus();
    // Kept again under this program's own name before the former one goes.
    m_recovery.Finish();
    RemoveKept(kept.project);
    statusBar()->showMessage(
        tr("The project is restored. Nothing is written to its file until you save it."));
    return true;
}

}  // namespace genvara
