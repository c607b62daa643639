#pragma once

#include <QElapsedTimer>
#include <QImage>
#include <QWidget>
#include <filesystem>

namespace genvara {

/// Shows product, brand and version while the program starts. A click says that it has been seen.
class frmSplash final : public QWidget {
    Q_OBJECT

  public:
    /// @param picture file of the picture; without one the window is blank.
    frmSplash(const std::filesystem::path& picture, QWidget* owner);

    /// Shows the window, and waits a moment for it to be on the screen: what follows keeps the program busy.
    void Appear();
    /// How long it has been on the screen [ms]; 0 before.
    [[nodiscard]] int SeenFor() const;

  signals:
    void Clicked();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

  private:
    QImage m_picSplash;
    QElapsedTimer m_seen;
};

}  // namespace genvara
