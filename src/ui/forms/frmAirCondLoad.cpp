#include "frmAirCondLoad.h"

#include <QLabel>
#include <vector>

#include "CompressorSize.h"
#include "LastChance.h"
#include "Texts.h"

namespace genvara {
namespace {

constexpr int kDigits = 10;

/// The label before the size, with a key that no other caption of the form has.
QString SizeCaption(const SizeMethod& method) {
    const QString caption = Caption(method.caption);
    return QString(caption).insert(caption.indexOf(method.key), '&');
}

}  // namespace

frmAirCondLoad::frmAirCondLoad(const LoadFormServices& services)
    : LoadFormOf(load_type::kAirConditioning, services) {
    AddMethods();
    const SizeMethod& first = kSizeMethods.front();
    m_power = AddField({.labelName = "lblPowerTitle",
                        .name = "txtPower",
                        .caption = SizeCaption(first),
                        .digits = kDigits,
                        .note = ToQt(SizeNote(first)),
                        .noteName = "lblPowerUnits"},
                       key_filters::Numeric(), false);
    m_powerTitle = findChild<QLabel*>("lblPowerTitle");
    m_powerUnits = findChild<QLabel*>("lblPowerUnits");
    connect(m_method, &OptionFrame::Clicked, this, Event([this](std::int32_t code) { MethodClicked(code); }));
    m_method->Select(first.code);
    OpenForNewLoad();
}

void frmAirCondLoad::AddMethods() {
    std::vector<OptionFrame::Option> options;
    for (const SizeMethod& method : kSizeMethods) {
        options.push_back({.name = method.button, .caption = Caption(method.caption), .code = method.code});
    }
    m_method = new OptionFrame("fraDataEntry", {}, options, Qt::Horizontal);
    m_method->setAccessibleName(tr("Data Entry Method"));
    Fields().AddWide(m_method);
}

void frmAirCondLoad::MethodClicked(std::int32_t code) {
    const SizeMethod& method = *FindSizeMethod(code);
    m_powerTitle->setText(SizeCaption(method));
    m_powerUnits->setText(ToQt(SizeNote(method)));
    m_power->setAccessibleName(Caption(method.caption));
}

void frmAirCondLoad::ShowKind(const CAirCondLoad& load) {
    if (const SizeMethod* method = FindSizeMethod(load.DataEntryMethod())) {
        m_method->Select(method->code);
        m_power->Content(Plain(StoredSize(load, *method)));
    }
}

bool frmAirCondLoad::StoreKind(CAirCondLoad& load) {
    StoreQuantity(load);
    StoreCompressorSize(load, m_method->Code().value_or(aircond_entry::kBTU), Number(*m_power),
                        Project().catalogue.Motors());
    return true;
}

std::string frmAirCondLoad::FailureText(const RaisedError& failure) const {
    return AirCondFailureText(Current() != m_power, failure);
}

}  // namespace genvara
