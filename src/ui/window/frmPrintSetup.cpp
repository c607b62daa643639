#include "frmPrintSetup.h"

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ChoiceBox.h"
#include "DialogKeys.h"
#include "FormGrid.h"
#include "LastChance.h"
#include "SheetPreview.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr double kTwipsPerInch = 1440.0;
constexpr double kTwipsPerMillimetre = 1440.0 / 25.4;
/// Margins of a paper that has no room for those of the paper before: half an inch.
constexpr std::int32_t kUsualMargin = 720;
constexpr int kListCharacters = 30;
/// Steps that a length in other units may be off.
constexpr double kRounding = 1e-6;

constexpr std::int32_t Twips(double millimetres) {
    return static_cast<std::int32_t>(millimetres * kTwipsPerMillimetre +
                                     0.5);  // NOLINT(bugprone-incorrect-roundings): constant, and positive
}

struct Paper {
    const char* name;
    std::int32_t width;  ///< upright [twip]
    std::int32_t height;
};
constexpr std::array<Paper, 8> kPapers{{{"Letter (8.5 x 11 in)", 12240, 15840},
                                        {"Legal (8.5 x 14 in)", 12240, 20160},
                                        {"Tabloid (11 x 17 in)", 15840, 24480},
                                        {"A3 (297 x 420 mm)", Twips(297), Twips(420)},
                                        {"A4 (210 x 297 mm)", Twips(210), Twips(297)},
                                        {"A5 (148 x 210 mm)", Twips(148), Twips(210)},
                                        {"B4 (250 x 353 mm)", Twips(250), Twips(353)},
                                        {"B5 (176 x 250 mm)", Twips(176), Twips(250)}}};

/// A number field that the wheel changes only while it has the focus.
class MarginBox final : public QDoubleSpinBox {
  public:
    MarginBox() { setFocusPolicy(Qt::StrongFocus); }

  protected:
    void wheelEvent(QWheelEvent* event) override {
        if (hasFocus()) {
            QDoubleSpinBox::wheelEvent(event);
        } else {
            event->ignore();
        }
    }
};

}  // namespace

const std::array<frmPrintSetup::Margin, 4> frmPrintSetup::kMargins{
    {{"txtLeftMargin", "Left", &PrintSetup::left},
     {"txtRightMargin", "Right", &PrintSetup::right},
     {"txtTopMargin", "Top", &PrintSetup::top},
     {"txtBottomMargin", "Bottom", &PrintSetup::bottom}}};

frmPrintSetup::frmPrintSetup(const Printers& printers, PrintSetup setup, bool metric, QWidget* owner)
    : QDialog(owner),
      m_setup(std::move(setup)),
      m_metric(metric),
      m_cboPrinter(new ChoiceBox("cboPrinter")),
      m_cboPaper(new ChoiceBox("cboPaper")),
      m_optPortrait(new QRadioButton(tr("Portrait"))),
      m_optLandscape(new QRadioButton(tr("Landscape"))),
      m_picSheet(new SheetPreview) {
    setObjectName("frmPrintSetup");
    setWindowTitle(tr("Print Setup"));
    FillPrinters(printers);
    FillPapers();
    Build();
    MarkMnemonics(*this);
    OrderTabsByLayout(*this);
    ShowPage();
    m_cboPrinter->setFocus();
}

void frmPrintSetup::FillPrinters(const Printers& printers) {
    QString standard = tr("Default printer");
    if (printers.names.isEmpty()) {
        standard = tr("No printer is installed");
    } else if (!printers.standard.isEmpty()) {
        standard += " (" + printers.standard + ")";
    }
    m_cboPrinter->AddRow(standard);
    m_printers.append(QString());
    for (const QString& name : printers.names) {
        m_cboPrinter->AddRow(name);
        m_printers.append(name);
    }
    const QString chosen = ToQt(m_setup.printer);
    if (!m_printers.contains(chosen)) {
        m_cboPrinter->AddRow(tr("%1 (not available)").arg(chosen));
        m_printers.append(chosen);
    }
    m_cboPrinter->setCurrentIndex(static_cast<int>(m_printers.indexOf(chosen)));
    connect(m_cboPrinter, &ChoiceBox::Clicked, this, Event([this](int row) { PrinterClicked(row); }));
}

void frmPrintSetup::FillPapers() {
    for (const Paper& paper : kPapers) {
        m_cboPaper->AddRow(paper.name);
    }
    const std::int32_t width = std::min(m_setup.width, m_setup.height);
    const std::int32_t height = std::max(m_setup.width, m_setup.height);
    const auto* const known = std::ranges::find_if(
        kPapers, [&](const Paper& paper) { return paper.width == width && paper.height == height; });
    if (known == kPapers.end()) {
        m_cboPaper->AddRow(tr("As before"));
    }
    m_cboPaper->setCurrentIndex(static_cast<int>(known - kPapers.begin()));
    connect(m_cboPaper, &ChoiceBox::Clicked, this, Event([this](int row) { PaperClicked(row); }));
}

QWidget* frmPrintSetup::MakeOrientation() {
    m_optPortrait->setObjectName("optPortrait");
    m_optLandscape->setObjectName("optLandscape");
    auto* frame = new QGroupBox(tr("Orientation"));
    auto* line = new QHBoxLayout(frame);
    line->setSpacing(metrics::kMargin);
    line->addWidget(m_optPortrait);
    line->addWidget(m_optLandscape);
    line->addStretch(1);
    connect(m_optLandscape, &QRadioButton::toggled, this, Event([this](bool isWide) { Turn(isWide); }));
    return frame;
}

QWidget* frmPrintSetup::MakeMargins() {
    auto* frame = new QGroupBox(m_metric ? tr("Margins (mm)") : tr("Margins (inches)"));
    auto* grid = new QGridLayout(frame);
    grid->setHorizontalSpacing(metrics::kMargin);
    for (std::size_t i = 0; i < kMargins.size(); ++i) {
        const Margin& margin = kMargins.at(i);
        auto* box = new MarginBox;
        box->setObjectName(margin.name);
        box->setDecimals(m_metric ? 1 : 2);
        box->setSingleStep(m_metric ? 1.0 : 0.05);
        box->setKeyboardTracking(false);  // half a number is none
        box->setAccessibleName(tr("%1 margin").arg(tr(margin.caption)));
        auto* label = new QLabel(tr(margin.caption));
        label->setBuddy(box);
        const int row = static_cast<int>(i) / 2;
        const int column = static_cast<int>(i) % 2 * 2;
        grid->addWidget(label, row, column);
        grid->addWidget(box, row, column + 1);
        connect(box, &QDoubleSpinBox::valueChanged, this,
                Event([this, &margin](double value) { MarginChanged(margin, value); }));
        m_margins.at(i) = box;
    }
    grid->setColumnStretch(4, 1);
    return frame;
}

void frmPrintSetup::Build() {
    for (ChoiceBox* list : {m_cboPrinter, m_cboPaper}) {
        list->setMinimumContentsLength(kListCharacters);
    }
    auto* grid = new FormGrid;
    grid->AddField("lblPrinter", tr("Printer"), m_cboPrinter);
    grid->AddField("lblPaper", tr("Paper"), m_cboPaper);
    auto* left = new QVBoxLayout;
    left->setSpacing(metrics::kMargin);
    left->addLayout(grid);
    left->addWidget(MakeOrientation());
    left->addWidget(MakeMargins());
    auto* standard = new QPushButton(tr("Standard Page"));
    standard->setObjectName("cmdStandardPage");
    standard->setAutoDefault(false);
    standard->setToolTip(tr("Letter, upright, with the margins that reports are made for"));
    connect(standard, &QPushButton::clicked, this, Event([this] { UseStandardPage(); }));
    auto* right = new QVBoxLayout;
    right->addWidget(m_picSheet, 0, Qt::AlignHCenter);
    right->addWidget(standard);
    right->addStretch(1);
    auto* page = new QHBoxLayout;
    page->setSpacing(metrics::kMargin);
    page->addLayout(left, 1);
    page->addLayout(right);
    const OkCancel buttons = MakeOkCancel();
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(metrics::kMargin, metrics::kMargin, metrics::kMargin, metrics::kMargin);
    column->setSpacing(metrics::kMargin);
    column->addLayout(page);
    column->addStretch(1);
    column->addWidget(buttons.box);
    connect(buttons.ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(buttons.cancel, &QPushButton::clicked, this, &QDialog::reject);
}

void frmPrintSetup::PrinterClicked(int row) {
    m_setup.printer = FromQt(m_printers.value(row));
}

void frmPrintSetup::PaperClicked(int row) {
    if (row < 0 || row >= static_cast<int>(kPapers.size())) {
        return;
    }
    const Paper& paper = kPapers.at(static_cast<std::size_t>(row));
    const bool isWide = m_setup.width > m_setup.height;
    m_setup.width = isWide ? paper.height : paper.width;
    m_setup.height = isWide ? paper.width : paper.height;
    ShowPage();
}

void frmPrintSetup::Turn(bool isWide) {
    if (isWide != (m_setup.width > m_setup.height)) {
        std::swap(m_setup.width, m_setup.height);
        ShowPage();
    }
}

void frmPrintSetup::MarginChanged(const Margin& margin, double value) {
    // A length that is only shown keeps its twips, which have more digits.
    if (!m_isShowing) {
        m_setup.*margin.length = Entered(value);
        ShowPage();
    }
}

void frmPrintSetup::UseStandardPage() {
    const std::string printer = m_setup.printer;
    m_setup = {.printer = printer};
    const QSignalBlocker quiet(m_cboPaper);
    m_cboPaper->setCurrentIndex(0);
    ShowPage();
}

/// Margins that leave too little give way to usual ones.
void frmPrintSetup::MakeRoom() {
    if (m_setup.width - m_setup.left - m_setup.right < paper_limits::kLeastTextWidth) {
        m_setup.left = m_setup.right = kUsualMargin;
    }
    if (m_setup.height - m_setup.top - m_setup.bottom < paper_limits::kLeastTextHeight) {
        m_setup.top = m_setup.bottom = kUsualMargin;
    }
}

void frmPrintSetup::ShowPage() {
    MakeRoom();
    m_isShowing = true;
    const std::int32_t across = m_setup.width - paper_limits::kLeastTextWidth;
    const std::int32_t down = m_setup.height - paper_limits::kLeastTextHeight;
    const std::array<std::int32_t, 4> most{across - m_setup.right, across - m_setup.left,
                                           down - m_setup.bottom, down - m_setup.top};
    for (std::size_t i = 0; i < kMargins.size(); ++i) {
        const bool isBottom = kMargins.at(i).length == &PrintSetup::bottom;
        const std::int32_t least = isBottom ? paper_limits::kLeastBottom : paper_limits::kLeastMargin;
        const double steps = std::pow(10.0, m_margins.at(i)->decimals());
        // Whole steps within the bounds, so that no length on either side of them can be shown.
        m_margins.at(i)->setRange(std::ceil(Shown(least) * steps - kRounding) / steps,
                                  std::floor(Shown(most.at(i)) * steps + kRounding) / steps);
        m_margins.at(i)->setValue(Shown(m_setup.*kMargins.at(i).length));
    }
    m_isShowing = false;
    (m_setup.width > m_setup.height ? m_optLandscape : m_optPortrait)->setChecked(true);
    m_picSheet->Show(m_setup);
}

double frmPrintSetup::Shown(std::int32_t twips) const {
    return twips / (m_metric ? kTwipsPerMillimetre : kTwipsPerInch);
}

std::int32_t frmPrintSetup::Entered(double value) const {
    return static_cast<std::int32_t>(std::lround(value * (m_metric ? kTwipsPerMillimetre : kTwipsPerInch)));
}

}  // namespace genvara
