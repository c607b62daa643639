#include "frmAddLoad.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "DialogKeys.h"
#include "FailureRegion.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "LoadKinds.h"
#include "Pictures.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kListWidth = 280;  // pixels

}  // namespace

frmAddLoad::frmAddLoad(PlatformServices& platform, OpenForm openForm, QWidget* owner)
    : QDialog(owner), m_platform(&platform), m_openForm(std::move(openForm)), m_lstLoads(new QListWidget) {
    setObjectName("frmAddLoad");
    setWindowTitle(Caption(175));
    m_lstLoads->setObjectName("lstLoads");
    m_lstLoads->setAccessibleName(Caption(176));
    // The row is the code of the kind.
    for (const LoadKind& kind : LoadKinds()) {
        m_lstLoads->addItem(new QListWidgetItem(Picture(kind.picture), Caption(kind.listString)));
    }
    m_lstLoads->setMinimumSize(kListWidth,
                               m_lstLoads->sizeHintForRow(0) * m_lstLoads->count() + 2 * metrics::kGap);
    auto* label = new QLabel(Caption(176));
    label->setObjectName("lblAvailLoads");
    label->setBuddy(m_lstLoads);
    const OkCancel buttons = MakeOkCancel();
    buttons.ok->setEnabled(false);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kGap);
    column->addWidget(label);
    column->addWidget(m_lstLoads, 1);
    column->addSpacing(metrics::kGap);
    column->addWidget(buttons.box);
    connect(m_lstLoads, &QListWidget::itemSelectionChanged, buttons.ok,
            [ok = buttons.ok, this] { ok->setEnabled(!m_lstLoads->selectedItems().isEmpty()); });
    connect(m_lstLoads, &QListWidget::itemDoubleClicked, buttons.ok, &QPushButton::click);
    connect(buttons.ok, &QPushButton::clicked, this, Event([this] { OkClicked(); }));
    connect(buttons.cancel, &QPushButton::clicked, this, &QDialog::reject);
    MarkMnemonics(*this);
}

void frmAddLoad::OkClicked() {
    FailureRegion region;
    region.Run([this] { m_openForm(m_lstLoads->currentRow(), this); });
    if (!region.Pending()) {
        accept();
        return;
    }
    const std::string text =
        "Error #" + std::to_string(region.Pending()->Number()) +
        "\r\nCan not create the load.\r\nDo you want to try again or add a different load?";
    const MessageAnswer answer = m_platform->ShowMessage(
        this, {.text = text, .icon = MessageIcon::Question, .buttons = MessageButtons::YesNo});
    if (answer == MessageAnswer::No) {
        reject();
    }
}

}  // namespace genvara
