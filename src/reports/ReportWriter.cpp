#include "ReportWriter.h"

#include "RichTextDocument.h"

namespace genvara {

using namespace rich_text;

namespace {

constexpr std::string_view kHeadingFace = "Arial";
constexpr std::int32_t kTitleSize = 20;    // points
constexpr std::int32_t kHeadingSize = 14;  // points
constexpr std::int32_t kEmphasis = kBold | kItalic;

}  // namespace

OwnedDocument::OwnedDocument() : m_handle(RcgNewDoc()) {}

OwnedDocument::~OwnedDocument() {
    RcgEndDoc(m_handle);
}

ReportWriter::ReportWriter(std::string_view product, std::string_view title) {
    RcgSetFlags(Document(), -1, 1);
    RcgInitSect(Document());
    RcgBeginSectText(Document());
    RcgParaFlags(Document(), kCentred);
    RcgTextFont(Document(), kHeadingFace, kTitleSize, kEmphasis, kOn);
    Text(product);
    Text(kLineEnd);
    Text(title);
    Text("\r\n\r\n");
}

void ReportWriter::Text(std::string_view text) const {
    RcgInsertText(Document(), text);
}

void ReportWriter::Bold() const {
    RcgTextFont(Document(), "", 0, kBold, kOn);
}

void ReportWriter::Plain() const {
    RcgTextFont(Document(), "", 0, kBold, kOff);
}

void ReportWriter::Row(std::string_view bold, std::string_view plain) const {
    Bold();
    Text(bold);
    Plain();
    Text(plain);
}

void ReportWriter::Heading(std::string_view text) const {
    RcgTextFont(Document(), kHeadingFace, kHeadingSize, kEmphasis, kOn);
    Text(text);
    Text("\r\n\r\n");
}

void ReportWriter::Body(std::string_view face, std::int32_t size) const {
    RcgTextFont(Document(), face, size, kBold, kOn);
    RcgTextFont(Document(), "", 0, kItalic, kOff);
}

void ReportWriter::TabStops(std::span<const TabStop> stops) const {
    RcgResetParaProp(Document());
    for (const TabStop& stop : stops) {
        RcgParaTabStop(Document(), stop.type, stop.position, kNoLeader);
    }
}

std::string ReportWriter::Finish() const {
    std::int32_t length = 0;
    const std::int32_t data = RcgGetData(Document(), length);
    std::string report(static_cast<std::size_t>(length), ' ');
    RcgHandleToStr(report, length, data);
    RcgEndDoc(Document());
    return report;
}

}  // namespace genvara
