#include "support/BundleInformation.h"

#include <gtest/gtest.h>

namespace tidewell {
namespace {

TEST(BundleInformation, ComesFromTheDictionaryOrHasItsFallback) {
    const Bundle bundle({{"CFBundleName", "Tidewell"},
                         {"CFBundleShortVersionString", "1.2.3"},
                         {"CFBundleVersion", "45"},
                         {"NSHumanReadableCopyright", ""}});
    EXPECT_EQ(applicationName(bundle), "Tidewell");
    EXPECT_EQ(version(bundle), "1.2.3");
    EXPECT_EQ(buildNumber(bundle), "45");
    EXPECT_EQ(copyright(bundle), "");

    const Bundle empty({});
    EXPECT_EQ(applicationName(empty), "Unknown");
    EXPECT_EQ(version(empty), "No version");
    EXPECT_EQ(buildNumber(empty), "No build");
    EXPECT_EQ(copyright(empty), "No copyright information found.");
}

} // namespace
} // namespace tidewell
