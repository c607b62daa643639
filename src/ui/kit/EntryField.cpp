#include "EntryField.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QEvent>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <algorithm>
#include <memory>
#include <utility>

#include "CodePage.h"
#include "LastChance.h"
#include "NumberText.h"
#include "Texts.h"
#include "Theme.h"

namespace genvara {
namespace {

constexpr QColor kDisabledGround(0xE0, 0xE0, 0xE0);

/// A text of one line: what parts lines and columns elsewhere is a blank here.
QString OneLine(const QString& text) {
    return text.trimmed()
        .replace("\r\n", " ")
        .replace(QChar('\r'), ' ')
        .replace(QChar('\n'), ' ')
        .replace(QChar('\t'), ' ');
}

}  // namespace

EntryField::EntryField(PlatformServices& platform, const QString& name, QWidget* parent)
    : QLineEdit(parent), m_platform(&platform), m_error(*this) {
    setObjectName(name);
    ApplyColours();
    // The first to hear of an edit, so that whoever judges it next may show an error again.
    connect(this, &QLineEdit::textEdited, this, [this] {
        ClearError();
        m_edited = true;
    });
    connect(this, &QLineEdit::textChanged, this, [this] {
        m_checked = false;
        if (!std::exchange(m_edited, false)) {
            ClearError();
        }
    });
}

QString EntryField::Complaint() const {
    return m_bounds ? ToQt(genvara::Complaint(*m_bounds, Content(), EntryNumbers())) : QString();
}

void EntryField::ShowError(const QString& sentence) {
    m_error.Show(sentence);
    ApplyColours();
}

void EntryField::ClearError() {
    const bool shown = m_error.IsShown();
    m_error.Clear();
    if (shown) {
        ApplyColours();
    }
}

bool EntryField::HoldsInteger() const {
    const std::optional<double> number = EntryNumbers().Read(Content());
    return number && RoundToInteger(*number);
}

void EntryField::Refuse(const QString& sentence) {
    m_platform->Beep();
    ShowError(sentence);
    SelectAllText();
}

bool EntryField::RefuseOutOfBounds() {
    const QString complaint = Complaint();
    if (!complaint.isEmpty()) {
        Refuse(complaint);
    }
    return !complaint.isEmpty();
}

void EntryField::SelectAllText() {
    setFocus(Qt::OtherFocusReason);
    selectAll();
}

bool EntryField::HoldsFocus() {
    if (!m_holds || isReadOnly() || !isEnabled()) {
        return false;
    }
    const bool held = m_holds();
    m_checked = !held;
    return held;
}

void EntryField::Leave() {
    m_atHand = false;
    if (m_left) {
        RunEvent(m_left);
    }
}

bool EntryField::Refuses(char32_t key) const {
    return m_filter &&
           m_filter(Content(), static_cast<std::size_t>(selectedText().size()), key) == KeyVerdict::Refuse;
}

bool EntryField::TakesAll(const std::string& text) const {
    QString rest = this->text();
    const auto at = static_cast<qsizetype>(hasSelectedText() ? selectionStart() : cursorPosition());
    std::string left = rest.remove(at, selectedText().size()).toStdString();
    for (const char32_t character : DecodeUtf8(text)) {
        if (m_filter && m_filter(left, 0, character) == KeyVerdict::Refuse) {
            return false;
        }
        AppendUtf8(left, character);
    }
    return true;
}

/// What an entered text will stand behind.
QString EntryField::TextBefore() const {
    return text().left(hasSelectedText() ? selectionStart() : cursorPosition());
}

void EntryField::TakeText(const QString& text) {
    if (isReadOnly() || text.isEmpty()) {
        return;
    }
    if (!m_filter && !m_bounds) {
        insert(WithTypographicQuotes(OneLine(text), TextBefore()));
        return;
    }
    const EntryNumbers numbers;
    std::string typed = numbers.AsTyped(text.toStdString());
    const std::optional<double> number = numbers.Read(typed);
    if (!TakesAll(typed) && number) {
        typed = numbers.Plain(*number);  // "15.0" in a field of digits, or "1E+03"
    }
    if (number && TakesAll(typed)) {
        insert(ToQt(typed));
        return;
    }
    m_platform->Beep();
    m_error.Say(m_bounds && !genvara::Complaint(*m_bounds, typed, numbers).empty()
                    ? ToQt(genvara::Complaint(*m_bounds, typed, numbers))
                    : tr("%1 cannot be entered here.").arg(OneLine(text).left(24)));
}

void EntryField::paste() {
    RunEvent([this] { TakeText(QApplication::clipboard()->text()); });
}

void EntryField::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste)) {
        paste();
        event->accept();
        return;
    }
    const QString typed = event->text();
    const bool command =
        (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    if (!isReadOnly() && !command && !typed.isEmpty() && typed.at(0).isPrint()) {
        bool refused = false;
        RunEvent([&] { refused = Refuses(typed.toStdU32String().front()); });
        if (refused) {
            m_platform->Beep();
            event->accept();
            return;
        }
        const QString quoted = WithTypographicQuotes(typed, TextBefore());
        if (quoted != typed) {
            QKeyEvent quote(event->type(), event->key(), event->modifiers(), quoted);
            QLineEdit::keyPressEvent(&quote);
            return;
        }
    }
    QLineEdit::keyPressEvent(event);
}

void EntryField::inputMethodEvent(QInputMethodEvent* event) {
    const std::u32string typed = event->commitString().toStdU32String();
    if (std::ranges::any_of(typed, [this](char32_t key) { return Refuses(key); })) {
        m_platform->Beep();
        return;
    }
    event->setCommitString(WithTypographicQuotes(event->commitString(), TextBefore()),
                           event->replacementStart(), event->replacementLength());
    QLineEdit::inputMethodEvent(event);
}

void EntryField::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton && QApplication::clipboard()->supportsSelection()) {
        deselect();
        RunEvent([this] { TakeText(QApplication::clipboard()->text(QClipboard::Selection)); });
        event->accept();
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
}

void EntryField::contextMenuEvent(QContextMenuEvent* event) {
    const std::unique_ptr<QMenu> menu(createStandardContextMenu());
    if (menu == nullptr) {
        return;
    }
    const QString caption = QLineEdit::tr("&Paste");
    for (QAction* item : menu->actions()) {
        if (item->text().startsWith(caption)) {
            item->disconnect(SIGNAL(triggered(bool)));
            connect(item, &QAction::triggered, this, &EntryField::paste);
        }
    }
    menu->exec(event->globalPos());
}

void EntryField::dropEvent(QDropEvent* event) {
    if (event->source() == this) {
        QLineEdit::dropEvent(event);  // a part of the text is moved within it
        return;
    }
    deselect();
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    RunEvent([this, event] { TakeText(event->mimeData()->text()); });
    event->acceptProposedAction();
}

void EntryField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    m_checked = false;
    m_atHand = true;
    m_error.Recall();
    if (m_entered) {
        RunEvent(m_entered);
    }
}

void EntryField::focusOutEvent(QFocusEvent* event) {
    const Qt::FocusReason reason = event->reason();
    const int start = selectionStart();
    const auto selected = static_cast<int>(selectedText().size());
    const bool backwards = cursorPosition() == start;
    QLineEdit::focusOutEvent(event);
    if (reason == Qt::MenuBarFocusReason && selected > 0) {
        // What the Edit menu is opened for.
        setSelection(backwards ? start + selected : start, backwards ? -selected : selected);
    }
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
        reason == Qt::MenuBarFocusReason) {
        return;
    }
    bool held = false;
    const QWidget* next = QApplication::focusWidget();
    const bool unchecked = next != nullptr && IsLeftUnchecked(*next);
    if (!m_checked && !unchecked && isVisible()) {
        RunEvent([&] { held = HoldsFocus(); });
    }
    if (held) {
        QMetaObject::invokeMethod(
            this, [this] { setFocus(Qt::OtherFocusReason); }, Qt::QueuedConnection);
    } else {
        m_error.Hide();
        Leave();
    }
}

bool EntryField::focusNextPrevChild(bool next) {
    bool held = false;
    RunEvent([&] { held = HoldsFocus(); });
    return held || QLineEdit::focusNextPrevChild(next);
}

void EntryField::showEvent(QShowEvent* event) {
    QLineEdit::showEvent(event);
    m_error.Recall();
}

void EntryField::hideEvent(QHideEvent* event) {
    QLineEdit::hideEvent(event);
    if (!event->spontaneous()) {
        m_atHand = false;
    }
}

void EntryField::changeEvent(QEvent* event) {
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::ReadOnlyChange ||
        event->type() == QEvent::PaletteChange) {
        ApplyColours();
    }
}

void EntryField::ApplyColours() {
    if (m_applying) {
        return;  // setting the palette reports its change
    }
    m_applying = true;
    QPalette colours = QApplication::palette(this);
    if (InError()) {
        colours.setColor(QPalette::Base, FieldError::kGround);
        colours.setColor(QPalette::Text, Qt::black);
    } else if (isReadOnly()) {
        colours.setColor(QPalette::Base, colours.color(QPalette::Window));
    } else {
        GreyDisabled(colours, QPalette::Base);
    }
    setPalette(colours);
    m_applying = false;
    update();
}

void EntryField::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    m_error.PaintOutline();
}

void GreyDisabled(QPalette& colours, QPalette::ColorRole ground) {
    if (!theme::IsDark(colours)) {
        colours.setColor(QPalette::Disabled, ground, kDisabledGround);
    }
}

}  // namespace genvara
