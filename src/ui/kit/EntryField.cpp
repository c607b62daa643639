#include "EntryField.h"

#include <QApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "LastChance.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr QColor kErrorGround(0xFF, 0x80, 0x80);
constexpr QColor kErrorOutline(0xA0, 0x10, 0x20);
constexpr QColor kDisabledGround(0xE0, 0xE0, 0xE0);
/// Grounds darker than this belong to a dark theme [0..255].
constexpr int kDarkLightness = 128;
constexpr const char* kLeavesUnchecked = "leavesUnchecked";

/// The widget that would take the focus of a click, if any.
const QWidget* FocusTaker(const QWidget* clicked) {
    for (const QWidget* widget = clicked; widget != nullptr; widget = widget->parentWidget()) {
        if ((widget->focusPolicy() & Qt::ClickFocus) != 0) {
            return widget;
        }
        if (widget->isWindow()) {
            break;
        }
    }
    return nullptr;
}

}  // namespace

EntryField::EntryField(PlatformServices& platform, const QString& name, QWidget* parent)
    : QLineEdit(parent), m_platform(&platform) {
    setObjectName(name);
    ApplyColours();
    connect(this, &QLineEdit::textChanged, this, [this] { m_checked = false; });
}

void EntryField::ShowError(const QString& sentence) {
    if (!m_inError) {
        m_ownToolTip = toolTip();
    }
    m_inError = true;
    setStatusTip(sentence);
    setToolTip(sentence);
    setAccessibleDescription(sentence);
    ApplyColours();
}

void EntryField::ClearError() {
    if (!m_inError) {
        return;
    }
    m_inError = false;
    setStatusTip({});
    setToolTip(m_ownToolTip);
    setAccessibleDescription({});
    ApplyColours();
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

bool EntryField::Refuses(char32_t key) const {
    return m_filter &&
           m_filter(Content(), static_cast<std::size_t>(selectedText().size()), key) == KeyVerdict::Refuse;
}

void EntryField::keyPressEvent(QKeyEvent* event) {
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
    }
    QLineEdit::keyPressEvent(event);
}

void EntryField::inputMethodEvent(QInputMethodEvent* event) {
    const std::u32string typed = event->commitString().toStdU32String();
    if (std::ranges::any_of(typed, [this](char32_t key) { return Refuses(key); })) {
        m_platform->Beep();
        return;
    }
    QLineEdit::inputMethodEvent(event);
}

void EntryField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    m_checked = false;
    if (m_entered) {
        RunEvent(m_entered);
    }
}

void EntryField::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    const Qt::FocusReason reason = event->reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
        reason == Qt::MenuBarFocusReason) {
        return;
    }
    bool held = false;
    const QWidget* next = QApplication::focusWidget();
    const bool unchecked = next != nullptr && next->property(kLeavesUnchecked).toBool();
    if (!m_checked && !unchecked && isVisible()) {
        RunEvent([&] { held = HoldsFocus(); });
    }
    if (held) {
        QMetaObject::invokeMethod(
            this, [this] { setFocus(Qt::OtherFocusReason); }, Qt::QueuedConnection);
    } else if (m_left) {
        RunEvent(m_left);
    }
}

bool EntryField::focusNextPrevChild(bool next) {
    bool held = false;
    RunEvent([&] { held = HoldsFocus(); });
    return held || QLineEdit::focusNextPrevChild(next);
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
    if (m_inError) {
        colours.setColor(QPalette::Base, kErrorGround);
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
    if (m_inError) {
        QPainter painter(this);
        painter.setPen(QPen(kErrorOutline, 2.0));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
}

void GreyDisabled(QPalette& colours, QPalette::ColorRole ground) {
    if (colours.color(QPalette::Active, QPalette::Base).lightness() >= kDarkLightness) {
        colours.setColor(QPalette::Disabled, ground, kDisabledGround);
    }
}

void LeavesUnchecked(QWidget& button) {
    button.setProperty(kLeavesUnchecked, true);
}

bool FocusIsHeldFrom(const QWidget& clicked) {
    auto* field = dynamic_cast<EntryField*>(QApplication::focusWidget());
    const QWidget* taker = FocusTaker(&clicked);
    if (field == nullptr || taker == nullptr || taker == field || clicked.window() != field->window() ||
        taker->property(kLeavesUnchecked).toBool()) {
        return false;
    }
    return field->HoldsFocus();
}

bool FocusIsHeld(const QWidget& window) {
    auto* field = dynamic_cast<EntryField*>(QApplication::focusWidget());
    return field != nullptr && field->window() == &window && field->HoldsFocus();
}

namespace key_filters {

EntryField::KeyFilter Numeric() {
    return [separator = DecimalSeparator()](const std::string& text, std::size_t, char32_t key) {
        return NumericKeyFilter(text, key, separator);
    };
}

EntryField::KeyFilter Digits() {
    return [](const std::string&, std::size_t, char32_t key) { return DigitKeyFilter(key); };
}

EntryField::KeyFilter UpTo(std::size_t most, EntryField::KeyFilter filter) {
    return [most, filter = std::move(filter)](const std::string& text, std::size_t selected, char32_t key) {
        const bool fits = MaxLengthKeyFilter(text.size(), selected, most, key) == KeyVerdict::Pass;
        return fits ? filter(text, selected, key) : KeyVerdict::Refuse;
    };
}

EntryField::KeyFilter DigitsUpTo(std::size_t most) {
    return UpTo(most, Digits());
}

EntryField::KeyFilter NonZeroDigits() {
    return
        [](const std::string& text, std::size_t, char32_t key) { return NonZeroDigitKeyFilter(text, key); };
}

}  // namespace key_filters

bool ValidateNumericText(EntryField& field) {
    const bool bad = ValidateNumericText(field.Content(), DecimalSeparator());
    if (bad) {
        field.ShowError(QObject::tr("A number must be entered."));
    } else {
        field.ClearError();
    }
    return bad;
}

}  // namespace genvara
