#include "FileStatus.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>

#include "FormGrid.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr const char* kMark = "\u25CF ";  // a dot, as other programs mark what is not saved
constexpr int kMostWidth = 260;           // pixels of a file's name

}  // namespace

FileStatus::FileStatus(QWidget* parent)
    : QWidget(parent), m_lblNotSaved(new QLabel(tr("Not saved"))), m_lblFile(new QLabel) {
    m_lblNotSaved->setObjectName("lblNotSaved");
    m_lblFile->setObjectName("lblFile");
    m_lblFile->setTextFormat(Qt::PlainText);
    QFont bold = font();
    bold.setBold(true);
    m_lblNotSaved->setFont(bold);
    m_lblNotSaved->hide();
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, metrics::kGap, 0);
    line->setSpacing(metrics::kMargin);
    line->addWidget(m_lblNotSaved);
    line->addWidget(m_lblFile);
}

void FileStatus::Show(const std::string& file, bool changed) {
    const QString name = file.empty() ? tr("New project") : QFileInfo(ToQt(file)).fileName();
    m_lblFile->setText((changed ? kMark : "") +
                       m_lblFile->fontMetrics().elidedText(name, Qt::ElideMiddle, kMostWidth));
    const QString words = changed ? tr("%1, changed").arg(name) : name;
    m_lblFile->setAccessibleName(words);
    m_lblFile->setToolTip(
        file.empty() ? words : ToQt(file) + (changed ? "\n" + tr("Changed since it was saved.") : ""));
}

void FileStatus::NotSaved(const std::string& reason) {
    m_lblNotSaved->setVisible(!reason.empty());
    m_lblNotSaved->setToolTip(ToQt(reason));
    m_lblNotSaved->setAccessibleDescription(ToQt(reason));
}

}  // namespace genvara
