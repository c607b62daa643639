#include "AxisRow.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <array>
#include <cmath>

#include "EntryNumbers.h"
#include "ErrorNumbers.h"
#include "FormGrid.h"
#include "NumberText.h"
#include "Properties.h"
#include "Sweep.h"
#include "TextGrid.h"
#include "Texts.h"
#include "WhatIfFigures.h"
#include "mdlConvert.h"

namespace genvara {
namespace {

constexpr int kDigits = 8;

bool CanVary(const PropertyFacts& facts) {
    return facts.type != PropertyType::Text && facts.type != PropertyType::Moment;
}
bool IsNumber(const PropertyFacts& facts) {
    return (facts.type == PropertyType::Real || facts.type == PropertyType::Whole) && facts.only.empty();
}

/// All codes of a member by their names, or both of its truths.
std::string ListOf(const PropertyFacts& facts) {
    if (facts.type == PropertyType::Truth) {
        return "false,true";
    }
    std::string list;
    for (const CodeName& code : facts.codes) {
        list += (list.empty() ? "" : ",") + std::to_string(code.Code());
    }
    for (const std::int32_t number : facts.only) {
        list += (list.empty() ? "" : ",") + std::to_string(number);
    }
    return list;
}

double NumberOf(const PropertyValue& value) {
    if (const auto* real = std::get_if<double>(&value)) {
        return *real;
    }
    const auto* whole = std::get_if<std::int32_t>(&value);
    return whole == nullptr ? 0.0 : *whole;
}

/// What stands there now, as one reads it: two decimals at most, and the site's figures as its panel may show
/// them too.
QString NowText(const PropertyFacts& facts, const PropertyValue& value) {
    QString text = ShownValue(facts, value);
    if (IsNumber(facts)) {
        constexpr double kHundredths = 100.0;
        text = ShownPlain(std::round(NumberOf(value) * kHundredths) / kHundredths);
    }
    text = (text + " " + ToQt(facts.unit)).trimmed();
    const auto also = [&](double other, const char* unit) {
        return QString("%1 (%2 %3)").arg(text, ShownNumber(other, 0), QString::fromUtf8(unit));
    };
    return facts.unit == "m"         ? also(MetersToFeet(NumberOf(value)), "feet")
           : facts.unit == "\u00B0C" ? also(CelsiusToFahrenheit(NumberOf(value)), "\u00B0F")
                                     : text;
}

}  // namespace

AxisRow::AxisRow(const QString& name, const QString& caption, bool isOptional, QWidget* parent)
    : QWidget(parent),
      m_isOptional(isOptional),
      m_record(new QComboBox),
      m_member(new QComboBox),
      m_range(new QWidget),
      m_from(new QLineEdit),
      m_to(new QLineEdit),
      m_by(new QLineEdit),
      m_now(FormGrid::MakeNote("lbl" + name + "Now")) {
    setObjectName("row" + name);
    m_record->setObjectName("cbo" + name + "Record");
    m_member->setObjectName("cbo" + name + "Member");
    m_record->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_member->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_record->setAccessibleName(WithoutMnemonic(caption));
    m_member->setAccessibleName(tr("Value"));
    auto* line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(metrics::kGap);
    auto* label = new QLabel(caption);
    label->setBuddy(m_record);
    label->setMinimumWidth(40);
    line->addWidget(label);
    line->addWidget(m_record);
    line->addWidget(m_member);
    auto* fields = new QHBoxLayout(m_range);
    fields->setContentsMargins(0, 0, 0, 0);
    fields->setSpacing(metrics::kGap);
    struct Bound {
        QLineEdit* field;
        QString name;
        QString caption;
    };
    const std::array rows{Bound{m_from, "From", tr("from")}, Bound{m_to, "To", tr("to")},
                          Bound{m_by, "By", tr("by")}};
    for (const Bound& row : rows) {
        row.field->setObjectName("txt" + name + row.name);
        row.field->setAccessibleName(row.caption);
        SetDigits(*row.field, kDigits);
        fields->addWidget(new QLabel(row.caption));
        fields->addWidget(row.field);
        connect(row.field, &QLineEdit::textEdited, this, &AxisRow::Changed);
    }
    line->addWidget(m_range);
    line->addWidget(m_now);
    line->addStretch(1);
    connect(m_record, &QComboBox::activated, this, [this] {
        FillMembers();
        ShowMember(true);
        emit Changed();
    });
    connect(m_member, &QComboBox::activated, this, [this] {
        ShowMember(true);
        emit Changed();
    });
}

void AxisRow::Offer(const StudyProject& project) {
    m_records.clear();
    m_record->clear();
    if (m_isOptional) {
        m_record->addItem(tr("nothing else"));
        m_records.emplace_back();
    }
    const auto begin = [&](const std::string& prefix) -> std::vector<Member>& {
        m_record->addItem(RecordName(ParsePath(prefix + "x"), project));
        return m_records.emplace_back();
    };
    const auto add = [](std::vector<Member>& members, const std::string& prefix, const auto& property,
                        const auto& record) {
        if (CanVary(property.facts)) {
            members.push_back(
                {prefix + std::string(property.facts.name), property.facts, property.get(record)});
        }
    };
    std::vector<Member>& site = begin("PowerSystem.");
    for (const auto& property : PowerSystemProperties()) {
        add(site, "PowerSystem.", property, project.powerSystem);
    }
    std::vector<Member>& options = begin("Designer.");
    for (const auto& property : DesignerProperties()) {
        add(options, "Designer.", property, project.limits);
    }
    std::int32_t number = 0;
    for (const CLoadStep& step : project.loadProfile) {
        const std::string prefix = "Step[" + std::to_string(++number) + "].";
        std::vector<Member>& members = begin(prefix);
        for (const auto& property : StepProperties()) {
            add(members, prefix, property, step);
        }
        std::int32_t position = 0;
        for (const Load& load : step) {
            const std::string place = prefix + "Load[" + std::to_string(++position) + "].";
            std::vector<Member>& own = begin(place);
            for (const auto& property : LoadProperties(load.LoadType())) {
                if (Exists(property, load)) {
                    add(own, place, property, load);
                }
            }
        }
    }
    Choose(m_path);
}

void AxisRow::Choose(const std::string& path) {
    if (m_records.empty()) {
        m_path = path;  // until there is something to choose from
        return;
    }
    for (std::size_t record = 0; record < m_records.size(); ++record) {
        const auto found = std::ranges::find(m_records[record], path, &Member::path);
        if (found != m_records[record].end()) {
            m_record->setCurrentIndex(static_cast<int>(record));
            FillMembers();
            m_member->setCurrentIndex(static_cast<int>(found - m_records[record].begin()));
            const bool isNew = m_path != path || (IsNumber(found->facts) && m_from->text().isEmpty());
            m_path = path;
            ShowMember(isNew);
            return;
        }
    }
    m_record->setCurrentIndex(0);
    FillMembers();
    ShowMember(true);
}

void AxisRow::FillMembers() {
    m_member->clear();
    const auto record = static_cast<std::size_t>(std::max(m_record->currentIndex(), 0));
    if (record < m_records.size()) {
        for (const Member& member : m_records[record]) {
            m_member->addItem(ToQt(member.facts.words.empty() ? member.facts.name : member.facts.words));
        }
    }
    m_member->setVisible(m_member->count() > 0);
}

const AxisRow::Member* AxisRow::Chosen() const {
    const auto record = static_cast<std::size_t>(m_record->currentIndex());
    const auto member = static_cast<std::size_t>(m_member->currentIndex());
    return m_record->currentIndex() >= 0 && record < m_records.size() && m_member->currentIndex() >= 0 &&
                   member < m_records[record].size()
               ? &m_records[record][member]
               : nullptr;
}

void AxisRow::ShowMember(bool withRange) {
    const Member* chosen = Chosen();
    m_path = chosen == nullptr ? std::string() : chosen->path;
    m_range->setVisible(chosen != nullptr && IsNumber(chosen->facts));
    m_now->clear();
    if (chosen == nullptr) {
        return;
    }
    m_now->setText(tr("now %1").arg(NowText(chosen->facts, chosen->now)));
    if (withRange && IsNumber(chosen->facts)) {
        const SweepRange range = FirstRange(chosen->facts, NumberOf(chosen->now));
        m_from->setText(ShownPlain(range.from));
        m_to->setText(ShownPlain(range.to));
        m_by->setText(ShownPlain(range.by));
    }
}

bool AxisRow::IsRange() const {
    const Member* chosen = Chosen();
    return chosen != nullptr && IsNumber(chosen->facts);
}

std::string AxisRow::NumberIn(const QLineEdit& field, const QString& caption) const {
    const EntryNumbers numbers;
    const std::string text = numbers.AsTyped(FromQt(field.text()));
    if (const auto number = numbers.Read(text)) {
        return RenderShortest(*number);
    }
    throw RaisedError(errors::kTypeMismatch, "AxisRow",
                      FromQt(tr("\"%1\" of %2 is no number.").arg(field.text(), caption)));
}

std::optional<std::string> AxisRow::Text() const {
    const Member* chosen = Chosen();
    if (chosen == nullptr) {
        return std::nullopt;
    }
    if (!IsNumber(chosen->facts)) {
        return chosen->path + "=" + ListOf(chosen->facts);
    }
    return chosen->path + "=" + NumberIn(*m_from, tr("from")) + ":" + NumberIn(*m_to, tr("to")) + ":" +
           NumberIn(*m_by, tr("by"));
}

}  // namespace genvara
