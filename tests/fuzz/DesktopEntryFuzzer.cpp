#include "base/text/Utf8.h"
#include "model/processes/linux/DesktopEntry.h"
#include "tests/fuzz/Require.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tidewell;
    static const auto languages = entryLanguages("de_DE.UTF-8@euro");
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const auto entry = parseDesktopEntry(text, languages);
    require(!entry || !entry->name || (isUtf8(*entry->name) && !entry->name->empty()));
    entryLanguages(text);
    return 0;
}
