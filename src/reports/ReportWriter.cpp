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

ReportWriter::ReportWriter(std::string_view product, std::string_view title) : m_document(RcgNewDoc()) {
    RcgSetFlags(m_document, -1, 1);
    RcgInitSect(m_document);
    RcgBeginSectText(m_document);
    RcgParaFlags(m_document, kCentred);
    RcgTextFont(m_document, kHeadingFace, kTitleSize, kEmphasis, kOn);
    Text(product);
    Text(kLineEnd);
    Text(title);
    Text("\r\n\r\n");
}

ReportWriter::~ReportWriter() {
    RcgEndDoc(m_document);
}

void ReportWriter::Text(std::string_view text) const {
    RcgInsertText(m_document, text);
}

void ReportWriter::Bold() const {
    RcgTextFont(m_document, "", 0, kBold, kOn);
}

void ReportWriter::Plain() const {
    RcgTextFont(m_document, "", 0, kBold, kOff);
}

void ReportWriter::Row(std::string_view bold, std::string_view plain) const {
    Bold();
    Text(bold);
    Plain();
    Text(plain);
}

void ReportWriter::Heading(std::string_view text) const {
    RcgTextFont(m_document, kHeadingFace, kHeadingSize, kEmphasis, kOn);
    Text(text);
    Text("\r\n\r\n");
}

void ReportWriter::Body(std::string_view face, std::int32_t size) const {
    RcgTextFont(m_document, face, size, kBold, kOn);
    RcgTextFont(m_document, "", 0, kItalic, kOff);
}

void ReportWriter::TabStops(std::span<const TabStop> stops) const {
    RcgResetParaProp(m_document);
    for (const TabStop& stop : stops) {
        RcgParaTabStop(m_document, stop.type, stop.position, kNoLeader);
    }
}

std::string ReportWriter::Finish() const {
    std::int32_t length = 0;
    const std::int32_t data = RcgGetData(m_document, length);
    std::string report(static_cast<std::size_t>(length), ' ');
    RcgHandleToStr(report, length, data);
    RcgEndDoc(m_document);
    return report;
}

}  // namespace genvara
