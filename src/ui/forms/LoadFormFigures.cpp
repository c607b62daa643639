// What a load will count for, shown while it is entered.

#include <QAbstractButton>
#include <QComboBox>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <new>
#include <utility>

#include "FiguresText.h"
#include "LastChance.h"
#include "LoadForm.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kLines = 2;  // that the figures of several units may take

}  // namespace

void LoadForm::AddFigures() {
    m_figures = new NoteLabel({});
    m_figures->setObjectName("lblFigures");
    m_figures->setWordWrap(true);
    m_figures->setAlignment(Qt::AlignLeft | Qt::AlignBottom);
    // Room for the longest text from the start, so that nothing moves when it comes.
    m_figures->setFixedHeight(kLines * m_figures->fontMetrics().lineSpacing());
    m_figures->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    layout()->addWidget(m_figures);
    m_settling = new QTimer(this);
    m_settling->setSingleShot(true);
    connect(m_settling, &QTimer::timeout, this, Event([this] { ShowFigures(); }));
}

void LoadForm::WatchEntries() {
    // One look once all that follows from an entry has been entered, too.
    const auto settle = [this] { m_settling->start(0); };
    for (const QLineEdit* field : findChildren<QLineEdit*>()) {
        connect(field, &QLineEdit::textChanged, this, settle);
    }
    for (const QAbstractButton* button : findChildren<QAbstractButton*>()) {
        connect(button, &QAbstractButton::toggled, this, settle);
    }
    for (const QComboBox* list : findChildren<QComboBox*>()) {
        connect(list, &QComboBox::currentIndexChanged, this, settle);
    }
    settle();
}

void LoadForm::ShowFigures() {
    EntryField* const current = std::exchange(m_current, nullptr);
    m_trying = true;
    const auto [text, holds] = TryEntries();
    m_trying = false;
    m_current = current;
    m_figures->Pale(!holds);
    m_figures->setText(text);
    // A screen reader has it where a load is confirmed; spoken at every key it would only be in the way.
    m_ok->setAccessibleDescription(text);
}

LoadForm::Outcome LoadForm::TryEntries() {
    try {
        const std::unique_ptr<Load> trial = NewLoad();
        if (!Fill(*trial)) {
            return {tr("Nothing is entered yet."), false};
        }
        for (const EntryField* field : m_enforced) {
            if (field->isEnabled() && !field->Complaint().isEmpty()) {
                return {field->Complaint(), false};
            }
        }
        if (const std::optional<FailedFigure> failed = TryFigures(*trial)) {
            return {SentenceOn(*FieldOf(failed->figure), failed->failure.Description()), false};
        }
        return {ToQt(FiguresText(*trial, m_numbers)), true};
    } catch (const RaisedError& failure) {
        return {m_current == nullptr ? QString() : SentenceOn(*m_current, failure.Description()), false};
    } catch (const std::bad_alloc&) {
        return {};
    }
}

}  // namespace genvara
