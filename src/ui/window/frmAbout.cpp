#include "frmAbout.h"

#include <QDate>
#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include "CApplication.h"
#include "CShellTool.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "ProgramVersion.h"
#include "SystemInfo.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kIconSize = 64;          // pixels
constexpr int kDisclaimerWidth = 420;  // pixels
constexpr int kDisclaimerPoints = 7;

QLabel* MakeLabel(const char* name, const QString& text) {
    auto* label = new QLabel(text);
    label->setObjectName(name);
    return label;
}

/// The date of the build in the long form of the user's locale.
QString BuildDate() {
    const QDate date = QDate::fromString(ToQt(kBuildDate), Qt::ISODate);
    return QLocale().toString(date, QLocale::LongFormat);
}

}  // namespace

frmAbout::frmAbout(PlatformServices& platform, CApplication& application, QWidget* owner)
    : QDialog(owner), m_platform(&platform), m_application(&application) {
    setObjectName("frmAbout");
    setWindowTitle(Caption(10) + " " + Caption(11));
    Build();
}

void frmAbout::Build() {
    auto* picture = MakeLabel("picIcon", {});
    picture->setPixmap(QIcon(ToQt(m_application->AppIcon().string())).pixmap(kIconSize, kIconSize));
    auto* title = MakeLabel("lblTitle", Caption(11) + " " + ToQt(kProgramVersionText));
    QFont bold = title->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.3);
    title->setFont(bold);
    auto* disclaimer = MakeLabel("lblDisclaimer", Caption(309));
    disclaimer->setFont(QFont("Arial", kDisclaimerPoints));
    disclaimer->setWordWrap(true);
    disclaimer->setFixedWidth(kDisclaimerWidth);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(metrics::kGap);
    texts->addWidget(title);
    texts->addWidget(
        MakeLabel("lblVersion", Caption(306) + " " + ToQt(m_application->Designer().DatabaseVersion())));
    texts->addWidget(MakeLabel("lblBuildDate", Caption(308) + " " + BuildDate()));
    texts->addWidget(MakeLabel("lblCopyright", Caption(307)));
    auto* head = new QHBoxLayout;
    head->setSpacing(metrics::kMargin);
    head->addWidget(picture, 0, Qt::AlignTop);
    head->addLayout(texts, 1);

    auto* ok = new QPushButton(Caption(300));
    ok->setObjectName("cmdOK");
    ok->setDefault(true);
    auto* info = new QPushButton(Caption(301));
    info->setObjectName("cmdSysInfo");
    info->setAutoDefault(false);
    auto* buttons = new QDialogButtonBox;
    buttons->addButton(ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(info, QDialogButtonBox::ActionRole);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(info, &QPushButton::clicked, this, Event([this] { StartSysInfo(); }));

    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kMargin);
    column->addLayout(head);
    column->addWidget(disclaimer);
    column->addWidget(buttons);
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void frmAbout::StartSysInfo() {
    const std::string program = FindSystemInfo(m_application->Registry());
    if (program.empty() || !CShellTool(*m_platform).ExecCmdModeless(ToQt(program))) {
        m_platform->ShowMessage(this, {.text = FromQt(Caption(302)), .title = "Setup Program"});
    }
}

}  // namespace genvara
