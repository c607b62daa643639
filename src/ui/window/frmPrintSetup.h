#pragma once

#include <QDialog>
#include <QStringList>
#include <array>

#include "PrintSetup.h"

class QDoubleSpinBox;
class QRadioButton;

namespace genvara {

class ChoiceBox;
class SheetPreview;

/// Chooses printer, paper and margins. Margins are bounded so that a report has room on every paper.
class frmPrintSetup final : public QDialog {
    Q_OBJECT

  public:
    /// The printers of the desktop.
    struct Printers {
        QStringList names;
        QString standard;  ///< one of them; "" if the desktop has not chosen one
    };

    /// @param metric whether margins are shown in millimetres, or in inches.
    frmPrintSetup(const Printers& printers, PrintSetup setup, bool metric, QWidget* owner);

    [[nodiscard]] const PrintSetup& Setup() const noexcept { return m_setup; }

  private:
    struct Margin {
        const char* name;
        const char* caption;
        std::int32_t PrintSetup::*length;
    };
    static const std::array<Margin, 4> kMargins;

    void FillPrinters(const Printers& printers);
    void FillPapers();
    QWidget* MakeOrientation();
    QWidget* MakeMargins();
    void Build();
    void PrinterClicked(int row);
    void PaperClicked(int row);
    void Turn(bool isWide);
    void MarginChanged(const Margin& margin, double value);
    void UseStandardPage();
    void MakeRoom();
    void ShowPage();
    [[nodiscard]] double Shown(std::int32_t twips) const;
    [[nodiscard]] std::int32_t Entered(double value) const;

    PrintSetup m_setup;
    bool m_metric;
    bool m_isShowing = false;
    QStringList m_printers;  // names by row
    ChoiceBox* m_cboPrinter;
    ChoiceBox* m_cboPaper;
    QRadioButton* m_optPortrait;
    QRadioButton* m_optLandscape;
    std::array<QDoubleSpinBox*, 4> m_margins{};
    SheetPreview* m_picSheet;
};

}  // namespace genvara
