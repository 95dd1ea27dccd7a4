#include "platform/linux/MainThread.h"
#include "platform/updater/FeedUpdater.h"
#include "tests/fakes/MemoryUserDefaults.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/platform/linux/PrivateBus.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTextBrowser>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tidewell {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
namespace fs = std::filesystem;

/// An update server of the test's own.
class Server {
public:
    Server() {
        fs::create_directory(folder_.path() / "files");
        startChild(process_, u"/usr/bin/python3"_s,
                   {u"-B"_s, QStringLiteral(SERVER_PROGRAM),
                    QString::fromStdString(folder_.path().string())});
        if (!process_.waitForReadyRead(20000)) {
            throw std::runtime_error("no server");
        }
        ports_ = process_.readLine().split(' ');
    }
    ~Server() {
        process_.kill();
        process_.waitForFinished();
    }

    std::string authorities() const { return folder_.path() / "server.pem"; }
    std::string address(const std::string& path) const {
        return "https://127.0.0.1:" + ports_.at(0).toStdString() + "/" + path;
    }
    void put(const std::string& name, const std::string& content) const {
        writeText(folder_.path() / "files" / name, content);
    }

private:
    TemporaryFolder folder_;
    QProcess process_;
    QList<QByteArray> ports_;
};

struct Delegate final : public SPUUpdaterDelegate {
    void updaterDidFindValidUpdate(SPUUpdater& /*updater*/, const SUAppcastItem& item) override {
        answers.push_back(item.versionString);
    }
    void updaterDidNotFindUpdate(SPUUpdater& /*updater*/) override { answers.emplace_back("none"); }

    std::vector<std::string> take() { return std::exchange(answers, {}); }

    std::vector<std::string> answers;
};

class FeedUpdaterTest : public testing::Test {
protected:
    FeedUpdaterTest() {
        writeText(appImage, "old");
        fs::permissions(appImage, fs::perms::owner_read | fs::perms::group_read);
        settings.program = QStringLiteral(FETCH_PROGRAM);
        settings.authorities = QString::fromStdString(server.authorities());
        server.put("new", content);
    }

    static std::string text(const auto& bytes) {
        return QByteArray(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()))
            .toBase64()
            .toStdString();
    }
    /// Of version 1.10, found at `path`, which is signed as it lies on the server as "new".
    std::string item(const std::string& path, const KeyPair& signer,
                     const std::string& signedAs = "1.10",
                     const QString& signedType = appImageType) const {
        FileDigest digest;
        digest.add(QByteArrayView(content.data(), qsizetype(content.size())));
        AppcastItem release{};
        release.version = QString::fromStdString(signedAs);
        release.type = signedType;
        const auto signature = sign(signer.secretKey, signedText(release, digest));
        return "<item><description># News\n\n*All* new. ![](file:///etc/hostname)</description>"
               "<enclosure type='application/vnd.appimage' t:version='1.10' url='" +
               server.address(path) + "' length='" + std::to_string(content.size()) +
               "' t:signature='" + text(signature) + "'/></item>";
    }
    void putFeed(const std::string& items) const {
        server.put("feed.xml", "<rss version='2.0' xmlns:t='https://tidewell.example/ns/updates/1'>"
                               "<channel>" +
                                   items + "</channel></rss>");
    }

    void makeUpdater(const std::string& feed, bool isAppImage = true) {
        updater.reset();
        bundle = Bundle({{"SUFeedURL", feed},
                         {"SUPublicEDKey", text(keys.publicKey)},
                         {"CFBundleShortVersionString", "1.9"}});
        updater.emplace(
            FeedUpdater::Environment{
                .bundle = bundle,
                .defaults = defaults,
                .mainThread = mainThread,
                .log = log,
                .fetching = settings,
                .downloadFolder = QString::fromStdString(downloads),
                .appImage = isAppImage ? QString::fromStdString(link) : QString(),
                .systemVersion = {},
                .architecture = {},
                .open =
                    [this](const QString& file) {
                        opened = file.toStdString();
                        return true;
                    },
                .restart = [this](const QString& file) { restarted = file.toStdString(); }},
            driver, delegate);
    }
    void startUpdater(const std::string& feed, bool isAppImage = true) {
        makeUpdater(feed, isAppImage);
        ASSERT_EQ(updater->startUpdater(), std::nullopt);
    }

    static QWidget* window() {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible()) {
                return widget;
            }
        }
        return nullptr;
    }
    static std::string shownText() {
        QStringList texts;
        for (const QLabel* label :
             window() ? window()->findChildren<QLabel*>() : QList<QLabel*>()) {
            if (label->isVisible()) {
                texts.append(label->text());
            }
        }
        return texts.join(u'\n').toStdString();
    }
    static bool shows(const std::string& wanted) {
        const bool isShown =
            comesTrue([&] { return shownText().find(wanted) != std::string::npos; });
        EXPECT_TRUE(isShown) << wanted << " is not in: " << shownText();
        return isShown;
    }
    static void press(const char* title) {
        ASSERT_NE(window(), nullptr) << title;
        for (QPushButton* button : window()->findChildren<QPushButton*>()) {
            if (button->isVisible() && button->text() == QLatin1StringView(title)) {
                button->click();
                return;
            }
        }
        ADD_FAILURE() << "no button " << title;
    }
    void install() {
        updater->checkForUpdates();
        ASSERT_TRUE(shows("A new version"));
        press("Install");
    }
    void checkSilently() {
        updater->checkForUpdateInformation();
        EXPECT_FALSE(updater->canCheckForUpdates());
        EXPECT_TRUE(comesTrue([this] { return updater->canCheckForUpdates(); }));
        EXPECT_EQ(window(), nullptr);
    }
    std::vector<std::string> downloaded() const {
        std::vector<std::string> names;
        if (fs::exists(downloads)) {
            for (const auto& entry : fs::directory_iterator(downloads)) {
                names.push_back(entry.path().filename());
            }
        }
        return names;
    }

    std::string content = "\x7f"
                          "ELF\2\1\1\3AI\2" +
                          std::string(300000, 'n') + "new";
    Server server;
    KeyPair keys = makeKeyPair();
    TemporaryFolder folder;
    const std::string downloads = folder.path() / "cache/updates";
    const std::string appImage = folder.path() / "Tidewell.AppImage";
    const std::string link = folder.path() / "link";
    FetchSettings settings;
    Bundle bundle{{}};
    MemoryUserDefaults defaults;
    MainThread mainThread;
    RecordingLog log;
    std::shared_ptr<SPUStandardUserDriver> driver =
        std::make_shared<SPUStandardUserDriver>(u"Tidewell"_s, [] { return true; });
    Delegate delegate;
    std::string opened;
    std::string restarted;
    std::optional<FeedUpdater> updater;
};

TEST_F(FeedUpdaterTest, StartsOnlyWithAFeedAKeyAndAVersionAndKeepsWhatTheUserChose) {
    makeUpdater("https://tidewell.example/feed.xml");
    const Bundle::InfoDictionary info{{"SUFeedURL", "https://tidewell.example/feed.xml"},
                                      {"SUPublicEDKey", text(keys.publicKey)},
                                      {"CFBundleShortVersionString", "1.9"}};
    for (const auto& [key, text, wanted] :
         {std::tuple("SUFeedURL", "http://tidewell.example/", "http://tidewell.example/"),
          {"SUPublicEDKey", "AAAA", "not an Ed25519 public key"},
          {"CFBundleShortVersionString", "No version", "version"}}) {
        auto wrong = info;
        wrong[key] = text;
        bundle = Bundle(wrong);
        EXPECT_THAT(updater->startUpdater().value().description, HasSubstr(wanted));
        updater->checkForUpdateInformation();
        EXPECT_FALSE(updater->canCheckForUpdates());
    }
    updater->checkForUpdates();
    EXPECT_TRUE(shows("was not set up for updates"));
    press("OK");

    bundle = Bundle(info);
    EXPECT_EQ(updater->startUpdater(), std::nullopt);
    EXPECT_EQ(updater->startUpdater(), std::nullopt) << "a second time does nothing";
    EXPECT_TRUE(updater->canCheckForUpdates());
    EXPECT_EQ(updater->updateCheckInterval(), 86400);
    for (const auto& [set, is] :
         {std::pair(604800.0, 604800.0), {1.0, 3600.0}, {-5.0, 86400.0}, {std::nan(""), 86400.0}}) {
        updater->setUpdateCheckInterval(set);
        EXPECT_EQ(updater->updateCheckInterval(), is);
    }
}

TEST_F(FeedUpdaterTest, FetchesAheadInSilenceAndHandsTheVerifiedFileToTheDesktop) {
    putFeed(item("plain/new", keys));
    startUpdater(server.address("plain/feed.xml"), false);
    checkSilently();
    EXPECT_THAT(downloaded(), IsEmpty()) << "the user did not ask for it";
    updater->setAutomaticallyDownloadsUpdates(true);
    checkSilently();
    ASSERT_TRUE(comesTrue([this] { return downloaded() == std::vector<std::string>{"new"}; }));
    EXPECT_EQ(fs::status(downloads).permissions(), fs::perms::owner_all);
    server.put("new", "something else");
    startUpdater(server.address("plain/feed.xml"), false); // as after a new start of the program
    install();
    ASSERT_TRUE(shows("was downloaded and verified"));
    EXPECT_EQ(opened, downloads + "/new");
    EXPECT_EQ(readText(opened), content);
    press("OK");

    writeText(opened, "damaged");
    install();
    EXPECT_TRUE(shows("is not the right one")) << "it is asked for again";
    EXPECT_THAT(downloaded(), IsEmpty());
}

TEST_F(FeedUpdaterTest, DoesAsTheUserSays) {
    putFeed(item("slow/new", keys));
    startUpdater(server.address("plain/feed.xml"));
    updater->checkForUpdateInformation();
    updater->checkForUpdates();
    ASSERT_TRUE(shows("A new version")) << "in the place of the silent one";
    updater->checkForUpdates();
    EXPECT_THAT(delegate.take(), ElementsAre("1.10"));
    press("Install");
    ASSERT_TRUE(shows(" of 293 KB")) << "slowly";
    EXPECT_THAT(downloaded(), Contains(".unverified"));
    press("Cancel");
    EXPECT_THAT(downloaded(), IsEmpty());
    EXPECT_TRUE(updater->canCheckForUpdates());

    updater->checkForUpdates();
    ASSERT_TRUE(shows("A new version"));
    press("Skip This Version");
    checkSilently();
    EXPECT_THAT(delegate.take(), ElementsAre("1.10", "none", "none"));
    updater->checkForUpdates();
    ASSERT_TRUE(shows("A new version")) << "where it is the user who asks";
    window()->close();

    putFeed("");
    updater->checkForUpdates();
    EXPECT_TRUE(shows("Tidewell is up to date."));
    press("OK");
    updater->checkForUpdates();
    updater.reset();
    EXPECT_EQ(window(), nullptr) << "goes with it";
}

TEST_F(FeedUpdaterTest, InstallsNothingLeavesNothingAndSaysWhyWhereSomethingIsWrong) {
    fs::create_symlink(appImage, link);
    const KeyPair stranger = makeKeyPair();
    server.put("short", content.substr(1));
    server.put("changed", content.substr(1) + "!");
    server.put("bomb.xml", "<!DOCTYPE rss [<!ENTITY a 'aa'><!ENTITY b '&a;&a;'>]><rss>&b;</rss>");

    const auto late = "takes too long";
    struct Case {
        std::string feed;
        std::string item;
        const char* message;
    };
    const Case cases[] = {
        {"silent/feed.xml", "", late},
        {"slow/feed.xml", "", late},
        {"endless/feed.xml", "", "list of versions that cannot be read"},
        {"plain/bomb.xml", "", "list of versions that cannot be read"},
        {"broken/feed.xml", "", "cannot be reached"},
        {"status-404/feed.xml", "", "does not have"},
        {"redirect-6/feed.xml", "", "not safe"},
        {"weaker/feed.xml", "", "not safe"},
        {"", item("slow/new", keys), late},
        {"", item("endless/new", keys), "not complete, or is not the right one. It was deleted."},
        {"", item("plain/short", keys), "not complete, or is not the right one. It was deleted."},
        {"", item("plain/changed", keys), "was changed on its way. It was deleted."},
        {"", item("plain/new", stranger), "was changed on its way. It was deleted."},
        {"", item("plain/new", keys, "1.8"), "was changed on its way. It was deleted."},
        {"", item("plain/new", keys, "1.10", u"application/x-rpm"_s),
         "was changed on its way. It was deleted."},
    };
    defaults.set("SUAutomaticallyUpdate", true);
    for (const Case& each : cases) {
        SCOPED_TRACE(each.feed + each.item);
        const bool isFeedWrong = !each.feed.empty();
        putFeed(each.item);
        const auto limit = each.message == late ? 1000ms : 20000ms;
        settings.silence = settings.feedLimit = isFeedWrong ? limit : 20000ms;
        settings.fileLimit = limit;
        startUpdater(server.address(isFeedWrong ? each.feed : "plain/feed.xml"));
        checkSilently();
        EXPECT_TRUE(comesTrue([&] { return log.takeLines().size() == 1U; }));
        EXPECT_EQ(delegate.take(), std::vector<std::string>(isFeedWrong ? 0 : 1, "1.10"));
        EXPECT_THAT(downloaded(), IsEmpty());

        updater->checkForUpdates();
        if (!isFeedWrong && shows("A new version")) {
            press("Install");
        }
        EXPECT_TRUE(shows(each.message));
        EXPECT_THAT(downloaded(), IsEmpty());
        EXPECT_EQ(readText(appImage), "old");
        press("OK");
        EXPECT_EQ(log.takeLines().size(), 1U);
        delegate.take();
    }

    putFeed("");
    settings.authorities.clear();
    settings.silence = settings.feedLimit = 20000ms;
    startUpdater(server.address("plain/feed.xml")); // whose certificate nobody knows
    updater->checkForUpdates();
    EXPECT_TRUE(shows("could not prove"));
    press("OK");
    settings.authorities = QString::fromStdString(server.authorities());
    settings.program = u"/bin/false"_s;
    startUpdater(server.address("plain/feed.xml"));
    updater->checkForUpdates();
    EXPECT_TRUE(shows("missing or broke down"));
    press("OK");

    settings.program = QStringLiteral(FETCH_PROGRAM);
    for (const char mark :
         {'J', 'I'}) { // first no AppImage, then nothing to put one in the place of
        content[9] = mark;
        server.put("new", content);
        putFeed(item("plain/new", keys));
        startUpdater(server.address("plain/feed.xml"));
        install();
        EXPECT_TRUE(shows("could not be replaced"));
        press("OK");
        EXPECT_EQ(fs::remove(appImage), mark == 'J');
    }
}

} // namespace
} // namespace tidewell
