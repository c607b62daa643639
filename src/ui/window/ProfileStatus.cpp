#include "ProfileStatus.h"

#include <QEvent>
#include <QStatusBar>
#include <QTimer>

#include "EntryNumbers.h"
#include "FileStatus.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "ProfileCells.h"
#include "ProfilePowers.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kLongestName = 160;  // pixels of a load's name
constexpr int kAround = 60;        // pixels between and around message, figures and file

}  // namespace

ProfileStatus::ProfileStatus(QStatusBar& bar, const CLoadProfile& profile, const CPwrSys& site)
    : m_bar(&bar), m_profile(&profile), m_site(&site), m_settling(new QTimer(this)) {
    setObjectName("lblRunning");
    setTextFormat(Qt::PlainText);
    setContentsMargins(0, 0, metrics::kGap, 0);
    bar.addPermanentWidget(this);
    hide();
    m_settling->setSingleShot(true);
    connect(m_settling, &QTimer::timeout, this, Event([this] { ShowFigures(); }));
    connect(&bar, &QStatusBar::messageChanged, this, [this] { Fit(); });
    bar.installEventFilter(this);
}

void ProfileStatus::Refresh() {
    m_settling->start(0);
}

void ProfileStatus::ShowFigures() {
    const EntryNumbers numbers;
    const QString running = tr("Running %1 kW, %2 kVA")
                                .arg(PowerText(FigureOf(*m_profile, PowerKind::RunningReal), numbers),
                                     PowerText(FigureOf(*m_profile, PowerKind::RunningApparent), numbers));
    const std::optional<LargestStart> start = LargestStartOf(*m_profile, *m_site);
    m_running = start ? running : QString();
    m_whole = m_running;
    QString spoken = m_running;
    if (start) {
        const QString name = ToQt(start->name).simplified();
        const QString largest = tr("%1. Largest start %2 kVA, %3 A: %4")
                                    .arg(running, PowerText({.power = start->voltAmperes}, numbers),
                                         ToQt(numbers.Fixed(start->amperes, 0)));
        m_whole = largest.arg(fontMetrics().elidedText(name, Qt::ElideRight, kLongestName));
        spoken = largest.arg(name);
    }
    setAccessibleName(spoken);
    setToolTip(spoken.isEmpty() ? QString()
                                : tr("%1\nThe current is that at %2 V.").arg(spoken).arg(m_site->Voltage()));
    Fit();
}

int ProfileStatus::Room() const {
    const auto* file = m_bar->findChild<FileStatus*>();
    const QString message = m_bar->currentMessage();
    return m_bar->width() - (file == nullptr ? 0 : file->sizeHint().width()) -
           m_bar->fontMetrics().horizontalAdvance(message) - kAround;
}

void ProfileStatus::Fit() {
    const int room = Room();
    const auto fits = [&](const QString& text) { return fontMetrics().horizontalAdvance(text) <= room; };
    setText(fits(m_whole) ? m_whole : m_running);
    setVisible(!m_running.isEmpty() && fits(text()));
}

bool ProfileStatus::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_bar && event->type() == QEvent::Resize) {
        Fit();
    }
    return QLabel::eventFilter(watched, event);
}

}  // namespace genvara
