#pragma once

#include <QTreeWidget>
#include <optional>
#include <vector>

#include "Order.h"
#include "Variation.h"

namespace genvara {

/// Steps with their loads. A load can be dragged onto another one, which is said to whoever listens.
class OrderTree final : public QTreeWidget {
    Q_OBJECT

  public:
    /// @param name object name.
    OrderTree(const QString& name, const QString& title, bool takesDrags, QWidget* parent = nullptr);

    /// Shows the loads of a project in an order; those that start in another step than now say from which.
    void Show(const StudyProject& project, const LoadOrder& order);

    /// The loads that are selected, in the order of the steps.
    [[nodiscard]] std::vector<LoadPlace> SelectedLoads() const;

  signals:
    /// A load was dropped on another one.
    void Dropped(genvara::LoadPlace dragged, genvara::LoadPlace target);

  protected:
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    /// The load under a point of the viewport.
    [[nodiscard]] std::optional<LoadPlace> LoadAt(const QPoint& point) const;
};

}  // namespace genvara
