#include "base/text/ByteText.h"
#include "base/text/TimeOfDay.h"
#include "desktop/files/UserFolders.h"
#include "model/processes/linux/DesktopEntries.h"
#include "tests/fuzz/Require.h"

#include <cstdlib>

// Variables of any bytes: one after the other, as far as the lines of the input go.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tidewell;
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::size_t begin = 0;
    for (const char* variable : {"LANG", "LC_ALL", "LC_NUMERIC", "TZ", "HOME", "XDG_CONFIG_HOME",
                                 "XDG_RUNTIME_DIR", "XDG_DATA_HOME", "XDG_DATA_DIRS"}) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        setenv(variable, text.substr(begin, end - begin).c_str(), 1);
        begin = std::min(end + 1, text.size());
    }
    require(configurationFolder().is_absolute());
    const auto file = runtimeFile("lock");
    require(file.empty() || file.is_absolute());
    for (const std::string& folder : usualDataFolders()) {
        require(folder.starts_with('/'));
    }
    entryLanguages(userLocale(LocaleCategory::messages));
    require(!byteText(-1'234'567'890).empty() && !timeOfDayString(1e9).empty());
    return 0;
}
