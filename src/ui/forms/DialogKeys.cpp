#include "DialogKeys.h"

#include <QAbstractButton>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLayout>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "Mnemonics.h"
#include "Texts.h"

namespace genvara {
namespace {

/// Visits the widgets of a layout, and those of the layouts within, in their order.
void Visit(const QLayout& layout, const std::function<void(QWidget&)>& visitor) {
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem* item = layout.itemAt(i);
        if (const QLayout* inner = item->layout()) {
            Visit(*inner, visitor);
        } else if (QWidget* widget = item->widget()) {
            visitor(*widget);
            if (widget->layout() != nullptr) {
                Visit(*widget->layout(), visitor);
            }
        }
    }
}

/// A caption that can carry a mnemonic.
struct Captioned {
    std::string text;
    std::function<void(const QString&)> set;
};

std::vector<Captioned> CaptionsOf(const QWidget& dialog) {
    std::vector<Captioned> captions;
    Visit(*dialog.layout(), [&](QWidget& widget) {
        if (auto* label = qobject_cast<QLabel*>(&widget); label != nullptr && label->buddy() != nullptr) {
            captions.push_back({FromQt(label->text()), [label](const QString& t) { label->setText(t); }});
        } else if (auto* button = qobject_cast<QAbstractButton*>(&widget);
                   button != nullptr && !button->text().isEmpty() &&
                   qobject_cast<QDialogButtonBox*>(button->parentWidget()) == nullptr) {
            captions.push_back({FromQt(button->text()), [button](const QString& t) { button->setText(t); }});
        }
    });
    return captions;
}

}  // namespace

void OrderTabsByLayout(QWidget& dialog) {
    QWidget* previous = nullptr;
    Visit(*dialog.layout(), [&](QWidget& widget) {
        if ((widget.focusPolicy() & Qt::TabFocus) == 0) {
            return;
        }
        if (previous != nullptr) {
            QWidget::setTabOrder(previous, &widget);
        }
        previous = &widget;
    });
}

void MarkMnemonics(QWidget& dialog, std::string_view taken) {
    const std::vector<Captioned> captions = CaptionsOf(dialog);
    std::vector<std::string> texts;
    texts.reserve(captions.size());
    for (const Captioned& caption : captions) {
        texts.push_back(caption.text);
    }
    texts = WithMnemonics(std::move(texts), taken);
    for (std::size_t i = 0; i < captions.size(); ++i) {
        captions[i].set(ToQt(texts[i]));
    }
}

}  // namespace genvara
