#include "frmRecover.h"

#include <QDateTime>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <chrono>
#include <utility>

#include "DialogKeys.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kWidth = 560;  // pixels
constexpr int kListLines = 5;
constexpr int kDetailLines = 9;

QString NameOf(const KeptProject& kept, const KeptWords& words) {
    if (!words.name.empty()) {
        return ToQt(words.name);
    }
    return kept.origin.file.empty() ? QObject::tr("Project without a name")
                                    : QFileInfo(ToQt(kept.origin.file)).fileName();
}

QString TimeOf(const KeptProject& kept) {
    const auto since = kept.keptAt.time_since_epoch();
    const QDateTime moment =
        QDateTime::fromMSecsSinceEpoch(std::chrono::duration_cast<std::chrono::milliseconds>(since).count());
    return QLocale::system().toString(moment, QLocale::ShortFormat);
}

QString Details(const KeptProject& kept, const KeptWords& words) {
    QStringList lines;
    lines << (kept.origin.file.empty() ? QObject::tr("Never saved as a file.")
                                       : QObject::tr("File: %1").arg(ToQt(kept.origin.file)));
    if (!words.fault.empty()) {
        lines << QObject::tr("Cannot be read: %1").arg(ToQt(words.fault));
        return lines.join('\n');
    }
    lines << QObject::tr("Steps: %1, loads: %2.").arg(words.steps).arg(words.loads);
    if (!kept.origin.file.empty() && !words.hasFile) {
        lines << QObject::tr("The file is not there any more, or holds something else.");
    } else if (words.hasFile) {
        lines << (words.differences.empty() ? QObject::tr("Holds the same as the file.")
                                            : QObject::tr("Other than in the file:"));
    }
    for (const std::string& difference : words.differences) {
        lines << "  \u2022 " + ToQt(difference);
    }
    return lines.join('\n');
}

}  // namespace

frmRecover::frmRecover(PlatformServices& platform, std::vector<KeptProject> kept, bool lost,
                       const Teller& tell, QWidget* owner)
    : QDialog(owner),
      m_platform(&platform),
      m_kept(std::move(kept)),
      m_lstKept(new QListWidget),
      m_txtDetails(new QPlainTextEdit),
      m_cmdRestore(new QPushButton(tr("&Restore"))),
      m_cmdDiscard(new QPushButton(tr("&Discard"))) {
    for (const KeptProject& project : m_kept) {
        m_words.push_back(tell(project));
    }
    Build(lost);
    FillList();
}

void frmRecover::Build(bool lost) {
    setObjectName("frmRecover");
    setWindowTitle(tr("Recover Projects"));
    auto* intro = new QLabel(
        lost ? tr("The program did not end as it should. These projects were kept as they were:")
             : tr("Projects that were dropped with changes that no file holds, the latest first:"));
    intro->setWordWrap(true);
    intro->setBuddy(m_lstKept);
    m_lstKept->setObjectName("lstKept");
    m_lstKept->setAccessibleName(tr("Kept projects"));
    m_lstKept->setMinimumHeight(fontMetrics().lineSpacing() * kListLines);
    m_txtDetails->setObjectName("txtDetails");
    m_txtDetails->setAccessibleName(tr("What is in it"));
    m_txtDetails->setReadOnly(true);
    m_txtDetails->setTabChangesFocus(true);
    m_txtDetails->setMinimumHeight(fontMetrics().lineSpacing() * kDetailLines);
    m_cmdRestore->setObjectName("cmdRestore");
    m_cmdRestore->setDefault(true);
    m_cmdDiscard->setObjectName("cmdDiscard");
    auto* close = new QPushButton(lost ? tr("&Not Now") : tr("Close"));
    close->setObjectName("cmdClose");
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(m_cmdRestore, QDialogButtonBox::AcceptRole);
    buttons->addButton(m_cmdDiscard, QDialogButtonBox::DestructiveRole);
    buttons->addButton(close, QDialogButtonBox::RejectRole);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kGap);
    column->addWidget(intro);
    column->addWidget(m_lstKept, 1);
    column->addWidget(m_txtDetails, 2);
    column->addWidget(buttons);
    setMinimumWidth(kWidth);
    connect(m_lstKept, &QListWidget::currentRowChanged, this, [this] { ShowChosen(); });
    connect(m_lstKept, &QListWidget::itemActivated, m_cmdRestore, &QPushButton::click);
    connect(m_cmdRestore, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_cmdDiscard, &QPushButton::clicked, this, Event([this] { Discard(); }));
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
}

void frmRecover::FillList() {
    for (std::size_t at = 0; at < m_kept.size(); ++at) {
        m_lstKept->addItem(tr("%1, kept %2").arg(NameOf(m_kept[at], m_words[at]), TimeOf(m_kept[at])));
    }
    m_lstKept->setCurrentRow(m_kept.empty() ? -1 : 0);
    ShowChosen();
}

std::optional<KeptProject> frmRecover::Chosen() const {
    const int row = m_lstKept->currentRow();
    return row < 0 ? std::nullopt : std::optional(m_kept.at(static_cast<std::size_t>(row)));
}

void frmRecover::ShowChosen() {
    const int row = m_lstKept->currentRow();
    const auto at = static_cast<std::size_t>(row);
    m_txtDetails->setPlainText(row < 0 ? tr("Nothing is kept.") : Details(m_kept.at(at), m_words.at(at)));
    m_cmdRestore->setEnabled(row >= 0 && m_words.at(at).fault.empty());
    m_cmdDiscard->setEnabled(row >= 0);
}

void frmRecover::Discard() {
    const int row = m_lstKept->currentRow();
    const auto at = static_cast<std::ptrdiff_t>(row);
    const QString name =
        NameOf(m_kept.at(static_cast<std::size_t>(row)), m_words.at(static_cast<std::size_t>(row)));
    if (m_platform->ShowMessage(this, {.text = FromQt(tr("Discard \"%1\" for good?").arg(name)),
                                       .icon = MessageIcon::Question,
                                       .buttons = MessageButtons::YesNo}) != MessageAnswer::Yes) {
        return;
    }
    RemoveKept(m_kept.at(static_cast<std::size_t>(row)).project);
    m_kept.erase(m_kept.begin() + at);
    m_words.erase(m_words.begin() + at);
    delete m_lstKept->takeItem(row);  // NOLINT(cppcoreguidelines-owning-memory): the list gives it away
    ShowChosen();
}

}  // namespace genvara
