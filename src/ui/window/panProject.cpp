#include "panProject.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QTextCursor>
#include <QTextDocument>
#include <QVBoxLayout>
#include <algorithm>

#include "FormGrid.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kMostCharacters = 64;
constexpr int kDescriptionLines = 6;

EntryField* MakeField(PlatformServices& platform, const char* name) {
    auto* field = new EntryField(platform, name);
    field->setMaxLength(kMostCharacters);
    return field;
}

/// A file may hold more than can be typed; it is shown whole.
void ShowWhole(EntryField& field, const std::string& text) {
    const QString whole = ToQt(text);
    field.setMaxLength(std::max(kMostCharacters, static_cast<int>(whole.size())));
    field.setText(whole);
}

QString Moment(const char* what, const DateTime& moment) {
    return QString("%1: %2; %3").arg(what, ToQt(RenderLongDate(moment)), ToQt(RenderClockTime(moment)));
}

}  // namespace

panProject::panProject(PlatformServices& platform, QWidget* parent)
    : Panel("panProject", Caption(125), "lblProjName", parent),
      m_txtName(MakeField(platform, "txtName")),
      m_txtCustomer(MakeField(platform, "txtCustomer")),
      m_txtUserName(MakeField(platform, "txtUserName")),
      m_txtDescription(new QPlainTextEdit),
      m_lblCreated(FormGrid::MakeNote("lblCreated")),
      m_lblModified(FormGrid::MakeNote("lblModified")) {
    m_txtDescription->setObjectName("txtDescription");
    m_txtDescription->setTabChangesFocus(true);
    m_txtDescription->setMinimumHeight(fontMetrics().lineSpacing() * kDescriptionLines);
    auto* grid = new FormGrid;
    grid->AddField("lblName", Caption(130), m_txtName);
    grid->AddField("lblCustomer", Caption(131), m_txtCustomer);
    grid->AddField("lblUserName", Caption(133), m_txtUserName);
    QLabel* description = grid->AddField("lblDescription", Caption(132), m_txtDescription);
    grid->setAlignment(description, Qt::AlignTop);
    grid->setRowStretch(grid->rowCount() - 1, 1);
    Content()->addLayout(grid, 1);
    Content()->addWidget(m_lblCreated);
    Content()->addWidget(m_lblModified);
    connect(m_txtName, &QLineEdit::textChanged, this, [this](const QString& text) {
        Heading(text);
        emit ProjectNameChanged(text);
    });
    connect(m_txtDescription, &QPlainTextEdit::textChanged, this, [this] { ReplaceQuotes(); });
    WatchEdits();
}

void panProject::ReplaceQuotes() {
    const QTextDocument& text = *m_txtDescription->document();
    for (QTextCursor quote = text.find("\""); !quote.isNull(); quote = text.find("\"")) {
        const int place = quote.selectionStart();
        const QString before = place == 0 ? QString() : QString(text.characterAt(place - 1));
        quote.joinPreviousEditBlock();  // so that it is undone with the quote
        quote.insertText(WithTypographicQuotes("\"", before));
        quote.endEditBlock();
    }
}

void panProject::ModifiedDateTime(const DateTime& moment) {
    m_lblModified->setText(Moment("Last Saved", moment));
}

void panProject::CreatedDateTime(const DateTime& moment) {
    m_lblCreated->setText(Moment("Created", moment));
}

void panProject::ProjectName(const std::string& text) {
    ShowWhole(*m_txtName, text);
}

std::string panProject::ProjectName() const {
    return m_txtName->Content();
}

void panProject::CustomerName(const std::string& text) {
    ShowWhole(*m_txtCustomer, text);
}

std::string panProject::CustomerName() const {
    return m_txtCustomer->Content();
}

void panProject::Description(const std::string& text) {
    m_description = text;
    const QSignalBlocker shown(m_txtDescription);  // not entered
    m_txtDescription->setPlainText(ToQt(text));
}

std::string panProject::Description() const {
    // What nobody touched goes back as it came, with the line ends of its file.
    if (!m_txtDescription->document()->isModified()) {
        return m_description;
    }
    // The raw text, since the plain one has no no-break spaces; files end lines by CR LF.
    return FromQt(m_txtDescription->document()
                      ->toRawText()
                      .replace(QChar::ParagraphSeparator, "\r\n")
                      .replace(QChar::LineSeparator, "\r\n"));
}

void panProject::UserName(const std::string& text) {
    ShowWhole(*m_txtUserName, text);
}

std::string panProject::UserName() const {
    return m_txtUserName->Content();
}

void panProject::Store(CProject& project) const {
    project.Customer(CustomerName());
    project.Description(Description());
    project.ProjName(ProjectName());
    project.UserName(UserName());
}

}  // namespace genvara
