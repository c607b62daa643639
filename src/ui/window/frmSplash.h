#pragma once

#include <QImage>
#include <QWidget>
#include <filesystem>

namespace genvara {

/// Shows product, brand and version while the program starts.
class frmSplash final : public QWidget {
    Q_OBJECT

  public:
    /// @param picture file of the picture; without one the window is blank.
    frmSplash(const std::filesystem::path& picture, QWidget* owner);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QImage m_picSplash;
};

}  // namespace genvara
