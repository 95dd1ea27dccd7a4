#include "base/text/Utf8.h"
#include "model/processes/linux/CommandLine.h"
#include "model/processes/linux/ProcessFiles.h"
#include "model/processes/linux/ReadableLine.h"
#include "tests/fuzz/Require.h"

#include <algorithm>

// All readers of a process's files get the same text: each finds its own way through it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tidewell;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto stat = parseProcessStat(text)) {
        const std::string name = readableLine(stat->commandName);
        require(isUtf8(name) && name.find('\n') == std::string::npos);
    }
    parseProcessPages(text);
    require(bytesBehind("Pss:", text).value_or(0) % 1024 == 0);
    require(environmentVariable("A", text).size() < std::max<std::size_t>(text.size(), 1));
    const auto words = commandWords(text, 32);
    require(words.size() <= 32);
    programOfProcess(words);
    return 0;
}
