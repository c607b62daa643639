#pragma once

#include <QWidget>

#include "PrintSetup.h"

namespace genvara {

/// A small picture of a sheet of paper with its margins.
class SheetPreview final : public QWidget {
    Q_OBJECT

  public:
    explicit SheetPreview(QWidget* parent = nullptr);

    void Show(const PrintSetup& setup);

    [[nodiscard]] QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    PrintSetup m_setup;
};

}  // namespace genvara
