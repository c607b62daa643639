#pragma once

#include <QTableView>

namespace genvara {

/// A table whose first columns stay while one scrolls sideways, as long as there is room beside them.
class FrozenTable final : public QTableView {
    Q_OBJECT

  public:
    /// @param columns that stay
    explicit FrozenTable(int columns, QWidget* parent = nullptr);

    void setModel(QAbstractItemModel* model) override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    /// Width that the columns that stay cover now [pixels].
    [[nodiscard]] int Covered() const;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void Follow();

    int m_columns;
    QTableView* m_front;  ///< the columns that stay, before those that scroll away below
};

}  // namespace genvara
