#include "ProfileTotals.h"

#include <QEvent>
#include <QHeaderView>
#include <QLabel>
#include <algorithm>

#include "ProfileCells.h"

namespace genvara {
namespace {

constexpr int kRowHeight = 26;  // pixels, as the tree's rows with their pictures
constexpr int kTextInset = 4;   // pixels, as the tree's own cells
constexpr std::array<const char*, kPowerKinds.size()> kNames{"lblTotalRunningKW", "lblTotalRunningKVA",
                                                             "lblTotalStartingKW", "lblTotalStartingKVA"};

bool IsStarting(PowerKind kind) {
    return kind == PowerKind::StartingReal || kind == PowerKind::StartingApparent;
}

}  // namespace

ProfileTotals::ProfileTotals(const QHeaderView& header, QWidget* parent)
    : QFrame(parent), m_header(&header), m_caption(new QLabel(tr("All steps"), this)) {
    setObjectName("fraTotals");
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::AlternateBase);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    QFont bold = font();
    bold.setBold(true);
    setFont(bold);
    m_caption->setObjectName("lblTotals");
    for (const PowerKind kind : kPowerKinds) {
        auto* label = new QLabel(this);
        label->setObjectName(kNames.at(static_cast<std::size_t>(kind)));
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        m_powers.at(static_cast<std::size_t>(kind)) = label;
    }
    connect(m_header, &QHeaderView::sectionResized, this, [this] { FollowHeader(); });
    connect(m_header, &QHeaderView::geometriesChanged, this, [this] { FollowHeader(); });
}

void ProfileTotals::Show(const CLoadProfile& profile) {
    std::array<QString, kPowerKinds.size()> texts;
    for (const PowerKind kind : kPowerKinds) {
        const auto index = static_cast<std::size_t>(kind);
        const PowerFigure figure = FigureOf(profile, kind);
        texts.at(index) = PowerText(figure, m_numbers);
        QLabel& label = *m_powers.at(index);
        label.setText(texts.at(index));
        const QString meaning =
            IsStarting(kind)
                ? tr("If all steps started at once. A set has to start one step after the other.")
                : tr("Once all steps run.");
        label.setToolTip(figure.power ? meaning : QString::fromStdString(figure.why));
        label.setAccessibleName(
            tr("%1 of all steps: %2")
                .arg(profile_column::Name(profile_column::ColumnOf(kind)), texts.at(index)));
    }
    setAccessibleName(tr("All steps: %1").arg(PowerWords(texts)));
}

QString ProfileTotals::Widest() const {
    const auto* const longest =
        std::ranges::max_element(m_powers, {}, [](const QLabel* label) { return label->text().size(); });
    return (*longest)->text();
}

QSize ProfileTotals::sizeHint() const {
    return {0, std::max(kRowHeight, fontMetrics().height() + 2 * kTextInset)};
}

void ProfileTotals::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    FollowHeader();
}

void ProfileTotals::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        updateGeometry();
    }
}

void ProfileTotals::Place(QLabel& label, int column) const {
    label.setVisible(!m_header->isSectionHidden(column));
    label.setGeometry(frameWidth() + m_header->sectionViewportPosition(column) + kTextInset, 0,
                      m_header->sectionSize(column) - 2 * kTextInset, height());
}

void ProfileTotals::FollowHeader() {
    Place(*m_caption, profile_column::kText);
    for (const PowerKind kind : kPowerKinds) {
        Place(*m_powers.at(static_cast<std::size_t>(kind)), profile_column::ColumnOf(kind));
    }
}

}  // namespace genvara
