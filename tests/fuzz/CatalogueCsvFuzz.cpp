// Reads arbitrary bytes as a CSV table: every row must lie behind the one before.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "CsvTable.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace genvara;
    MemorySource source({reinterpret_cast<const char*>(data), size});
    std::int64_t last = 0;
    std::size_t bytes = 0;
    (void)ReadCsv(source, [&](std::int64_t line, const std::vector<std::string>& fields) {
        for (const std::string& field : fields) {
            bytes += field.size();
        }
        if (line < last || bytes > size) {
            std::abort();
        }
        last = line;
    });
    return 0;
}
