// Reads arbitrary bytes as rich text: any bytes give a document, and it keeps to what its parts promise.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "RichTextReader.h"

namespace {

using namespace genvara;

void Require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

void RequireSound(const RichFormat& format) {
    Require(format.halfPoints >= 2 && format.halfPoints <= 576);
    Require(format.spacing >= -200 && format.spacing <= 200);
}

void RequireSound(const RichParagraph& paragraph) {
    Require(paragraph.stops.size() <= 64);
    std::int32_t last = 0;
    for (const RichTabStop& stop : paragraph.stops) {
        Require(stop.position > last);
        last = stop.position;
    }
    const RichRun* before = nullptr;
    for (const RichRun& run : paragraph.runs) {
        Require(!run.text.empty());
        Require(before == nullptr || before->format != run.format);
        RequireSound(run.format);
        before = &run;
    }
    RequireSound(paragraph.mark);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const RichDocument document = ReadRichText({reinterpret_cast<const char*>(data), size});
    Require(document.page == SoundPage(document.page));
    Require(document.defaultTab > 0);
    Require(size > 0 || document.paragraphs.empty());
    for (const RichParagraph& paragraph : document.paragraphs) {
        RequireSound(paragraph);
    }
    return 0;
}
