// Cutting, copying, pasting, doubling and dragging steps and loads of the load profile.

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <memory>

#include "ProfileClip.h"
#include "ProfileFollower.h"
#include "ProfileTree.h"
#include "Texts.h"
#include "panLoadProfile.h"

namespace genvara {
namespace {

constexpr const char* kLoadsFormat = "application/x-genvara-loads+json";
constexpr const char* kStepsFormat = "application/x-genvara-steps+json";

/// "Load Heater" or "Step 2".
std::string NameOf(const ProfileTree& tree, const QTreeWidgetItem& node) {
    return ProfileTree::IsStep(node) ? "Step " + std::to_string(tree.StepPosition(node))
                                     : "Load " + FromQt(node.text(profile_column::kText));
}

/// "Load Heater" or "2 Loads".
std::string NameOfLoads(const CLoadStep& step) {
    return step.NumLoads() == 1 ? "Load " + step.begin()->name() : std::to_string(step.NumLoads()) + " Loads";
}

}  // namespace

QString panLoadProfile::InWords(const QTreeWidgetItem& node) const {
    const QString text = node.text(profile_column::kText);
    return ProfileTree::IsStep(node) ? tr("step %1, \"%2\"").arg(m_tree->StepPosition(node)).arg(text)
                                     : tr("load \"%1\"").arg(text);
}

ProfileClip panLoadProfile::ClipOfNode(const QTreeWidgetItem& node) const {
    const CLoadStep& step = m_project.profile.LoadStep(m_tree->StepPosition(node));
    const Load* load = ProfileTree::IsStep(node) ? nullptr : step.LoadItem(ProfileTree::LoadID(node));
    return load == nullptr ? ClipOf(step) : ClipOf(*load);
}

bool panLoadProfile::PutOnClipboard(const QTreeWidgetItem& node) {
    const ProfileClip clip = ClipOfNode(node);
    if (!Survives(clip, m_project.site, m_project.catalogue.Motors())) {
        emit Told(tr("The clipboard cannot hold %1 as it is. Edit it, or use Duplicate.").arg(InWords(node)));
        return false;
    }
    auto content = std::make_unique<QMimeData>();
    content->setData(clip.wholeSteps ? kStepsFormat : kLoadsFormat,
                     QByteArray::fromStdString(RenderClip(clip, m_project.site)));
    content->setText(ToQt(ClipTable(clip, EntryNumbers())));
    QGuiApplication::clipboard()->setMimeData(content.release());
    return true;
}

void panLoadProfile::Cut() {
    const QTreeWidgetItem* node = m_tree->Selected();
    if (node == nullptr || !PutOnClipboard(*node)) {
        return;
    }
    if (ProfileTree::IsStep(*node)) {
        TakeStepAway(tr("Cut"), "Cut");
    } else {
        TakeLoadAway(tr("Cut"), "Cut");
    }
}

void panLoadProfile::Copy() {
    const QTreeWidgetItem* node = m_tree->Selected();
    if (node != nullptr && PutOnClipboard(*node)) {
        emit Told(tr("Copied %1.").arg(InWords(*node)));
    }
}

void panLoadProfile::Paste() {
    const QMimeData* content = QGuiApplication::clipboard()->mimeData();
    const bool steps = content != nullptr && content->hasFormat(kStepsFormat);
    if (!steps && (content == nullptr || !content->hasFormat(kLoadsFormat))) {
        emit TablePasted(content == nullptr ? QString() : content->text());
        return;
    }
    const QByteArray text = content->data(steps ? kStepsFormat : kLoadsFormat);
    try {
        const ProfileClip clip = ReadClip({text.constData(), static_cast<std::size_t>(text.size())}, steps,
                                          m_project.site, m_project.catalogue.Motors());
        steps ? PasteSteps(clip) : PasteLoads(clip);
    } catch (const RaisedError&) {
        emit Told(tr("The clipboard holds no loads that can be used."));
    }
}

void panLoadProfile::PasteLoads(const ProfileClip& clip) {
    const CLoadStep& source = clip.steps.LoadStep(1);
    const std::int32_t position = SelectedStep();
    if (position == 0) {
        emit Told(tr("Select the step that the loads go into."));
        return;
    }
    CLoadStep& step = m_project.profile.LoadStep(position);
    if (step.Room() < source.NumLoads()) {
        emit Told(ToQt(WhyStepIsFull(position)).simplified());
        return;
    }
    ProfilePlace place{.stepId = step.StepID()};
    ChangeProfile("Paste " + NameOfLoads(source), place, [&] {
        for (const Load& load : source) {
            place.loadId = step.AddLoad(load.Clone());
        }
    });
    emit Told(source.NumLoads() == 1
                  ? tr("Pasted load \"%1\" into step %2.").arg(ToQt(source.begin()->name())).arg(position)
                  : tr("Pasted %1 loads into step %2.").arg(source.NumLoads()).arg(position));
}

void panLoadProfile::PasteSteps(const ProfileClip& clip) {
    const std::int32_t count = clip.steps.NumLoadSteps();
    if (!HasRoomForSteps(count)) {
        return;
    }
    // Behind the selected step, or at the end.
    const std::int32_t first = (SelectedStep() == 0 ? m_project.profile.NumLoadSteps() : SelectedStep()) + 1;
    ProfilePlace place;
    ChangeProfile(
        count == 1 ? "Paste Step " + std::to_string(first) : "Paste " + std::to_string(count) + " Steps",
        place, [&] {
            std::int32_t position = first;
            for (const CLoadStep& step : clip.steps) {
                place = {.stepId = AddCopy(m_project.profile, step, position)};
                ++position;
            }
        });
    emit Told(count == 1 ? tr("Pasted step %1.").arg(first)
                         : tr("Pasted steps %1 to %2.").arg(first).arg(first + count - 1));
}

bool panLoadProfile::HasRoomForSteps(std::int32_t count) {
    const std::int32_t steps = m_project.profile.NumLoadSteps();
    if (steps + count <= kMostLoadSteps) {
        return true;
    }
    emit Told(
        tr("A load profile takes no more than %1 steps; this one has %2.").arg(kMostLoadSteps).arg(steps));
    return false;
}

void panLoadProfile::Duplicate() {
    const QTreeWidgetItem* node = m_tree->Selected();
    if (node == nullptr) {
        return;
    }
    const QString what = InWords(*node);
    const std::int32_t position = m_tree->StepPosition(*node);
    CLoadStep& step = m_project.profile.LoadStep(position);
    ProfilePlace place{.stepId = step.StepID()};
    const std::string name = "Duplicate " + NameOf(*m_tree, *node);
    if (ProfileTree::IsStep(*node)) {
        if (!HasRoomForSteps(1)) {
            return;
        }
        ChangeProfile(name, place, [&] { place.stepId = AddCopy(m_project.profile, step, position + 1); });
    } else if (const Load* load = step.LoadItem(ProfileTree::LoadID(*node))) {
        if (!step.HasRoom()) {
            emit Told(ToQt(WhyStepIsFull(position)).simplified());
            return;
        }
        ChangeProfile(name, place, [&] { place.loadId = step.AddLoad(load->Clone()); });
    }
    emit Told(tr("Duplicated %1.").arg(what));
}

void panLoadProfile::TakeDrop(ProfilePlace what, std::int32_t position) {
    const QTreeWidgetItem* node = FindPlace(*m_tree, what);
    if (node == nullptr || position < 1 || position > m_project.profile.NumLoadSteps()) {
        return;
    }
    if (ProfileTree::IsStep(*node)) {
        MoveStepTo(m_tree->StepPosition(*node), position);
    } else if (m_tree->StepPosition(*node) != position) {
        MoveLoadTo(what, position);
    }
}

void panLoadProfile::MoveStepTo(std::int32_t from, std::int32_t position) {
    const ProfilePlace place{.stepId = m_project.profile.LoadStep(from).StepID()};
    m_host->Change("Move Step " + std::to_string(from), [&] {
        for (std::int32_t at = from; at < position; ++at) {
            m_project.profile.RaiseLoadStep(at);
        }
        for (std::int32_t at = from; at > position; --at) {
            m_project.profile.LowerLoadStep(at);
        }
    });
    ShowProfile(place);
    emit Edited();
}

void panLoadProfile::MoveLoadTo(ProfilePlace load, std::int32_t position) {
    CLoadStep& from = *m_project.profile.LoadStepByID(load.stepId);
    CLoadStep& to = m_project.profile.LoadStep(position);
    if (!to.HasRoom()) {
        emit Told(ToQt(WhyStepIsFull(position)).simplified());
        return;
    }
    ProfilePlace place{.stepId = to.StepID()};
    m_host->Change("Move Load " + from.LoadItem(load.loadId)->name(),
                   [&] { place.loadId = to.AddLoad(from.TakeLoad(load.loadId)); });
    ShowProfile(place);
    emit Edited();
}

void panLoadProfile::ChangeProfile(const std::string& name, const ProfilePlace& place,
                                   const std::function<void()>& change) {
    m_host->Change(name, change);
    ShowProfile(place);
    m_host->ProjectChanged();
}

}  // namespace genvara
