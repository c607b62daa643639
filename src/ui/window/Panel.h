#pragma once

#include <QWidget>

#include "NoticeBar.h"

class QLabel;
class QVBoxLayout;

namespace genvara {

/// One of the panels beside the side bar: the project's name as a heading with the panel's own title, a line
/// under it, and the content.
class Panel : public QWidget {
    Q_OBJECT

  public:
    /// @param nameLabel object name of the label that shows the project's name.
    Panel(const QString& name, const QString& title, const QString& nameLabel, QWidget* parent = nullptr);

    /// The control that has the focus, null while it is elsewhere.
    [[nodiscard]] QWidget* ActiveCtrl() const { return m_activeControl; }

    /// Keeps saying something at the top of the panel; an empty text ends it.
    void Notice(const QString& text) { m_notice->Text(text); }

    /// The control in which something was entered last; null for what is done by buttons of a panel's own.
    [[nodiscard]] QWidget* LastEdited() const { return m_lastEdited; }

  signals:
    /// Something was entered, chosen or changed by the user.
    void Edited();

  protected:
    /// Tells of what is typed, chosen or clicked in the controls that the panel has by now.
    void WatchEdits();

    /// Shows the project's name in the heading.
    void Heading(const QString& projectName);
    [[nodiscard]] QString Heading() const { return m_projectName; }
    [[nodiscard]] QVBoxLayout* Content() const { return m_content; }

    void resizeEvent(QResizeEvent* event) override;

  private:
    void FollowFocus(QWidget* now);
    void NoteEdit(QWidget* control);
    void ShowHeading();

    QLabel* m_heading;
    NoticeBar* m_notice;
    QVBoxLayout* m_content;
    QString m_projectName;
    QWidget* m_activeControl = nullptr;
    QWidget* m_lastEdited = nullptr;
};

}  // namespace genvara
