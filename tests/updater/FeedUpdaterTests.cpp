#include "desktop/session/MainThread.h"
#include "model/preferences/StoredPreferences.h"
#include "tests/desktop/PrivateBus.h"
#include "tests/fakes/MemoryUserDefaults.h"
#include "tests/fakes/RecordingLog.h"
#include "tests/fakes/ScopedEnvironment.h"
#include "tests/fakes/TemporaryFolder.h"
#include "tests/fakes/UpdaterContract.h"
#include "updater/FeedUpdater.h"
#include "updater/download/Confinement.h"
#include "updater/feed/SafeAddress.h"
#include "updater/feed/SignedFeed.h"
#include "updater/windows/NotesView.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QXmlStreamReader>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

#include <fcntl.h>
#include <sodium.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tidewell {

/// Whether windows were kept waiting by what takes its time with what others wrote.
bool hasBlockedWindows = false;

template <typename Function, typename... Arguments>
auto notingTheThread(Function function, Arguments... arguments) {
    if (::gettid() == ::getpid()) {
        hasBlockedWindows = true;
    }
    return function(arguments...);
}

// In the place of the libraries' functions, for the linker (CMakeLists.txt).
extern "C" {
using Bytes = const unsigned char*;
decltype(crypto_sign_verify_detached) __real_crypto_sign_verify_detached;
int __wrap_crypto_sign_verify_detached(Bytes sign, Bytes text, unsigned long long size, Bytes key) {
    return notingTheThread(__real_crypto_sign_verify_detached, sign, text, size, key);
}
decltype(crypto_hash_sha512_update) __real_crypto_hash_sha512_update;
int __wrap_crypto_hash_sha512_update(crypto_hash_sha512_state* state, Bytes text,
                                     unsigned long long size) {
    return notingTheThread(__real_crypto_hash_sha512_update, state, text, size);
}
bool realNext(QXmlStreamReader* xml) asm("__real_" NEXT_ELEMENT);
bool next(QXmlStreamReader* xml) asm("__wrap_" NEXT_ELEMENT);
bool next(QXmlStreamReader* xml) {
    return notingTheThread(realNext, xml);
}
}

namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
namespace fs = std::filesystem;

class FeedUpdaterTest : public testing::Test {
protected:
    FeedUpdaterTest() {
        fs::create_directory(folder.path() / "files");
        startChild(server, u"/usr/bin/python3"_s,
                   {u"-B"_s, QStringLiteral(SERVER_PROGRAM),
                    QString::fromStdString(folder.path().string())});
        EXPECT_TRUE(server.waitForReadyRead(20000));
        origin = "https://127.0.0.1:" + server.readLine().trimmed().toStdString() + "/";
        settings.program = QStringLiteral(FETCH_PROGRAM);
        settings.authorities = certificate;
        put("new", content);
        writeText(appImage, "old");
    }
    ~FeedUpdaterTest() override {
        EXPECT_FALSE(std::exchange(hasBlockedWindows, false));
        server.kill();
        server.waitForFinished();
    }

    void put(const std::string& name, const std::string& text) const {
        writeText(folder.path() / "files" / name, text);
    }

    static std::string text(const auto& bytes) { return base64(bytes).toStdString(); }
    /// Of a release, found at `path`, which is signed as it lies on the server as "new".
    std::string item(const std::string& path, const KeyPair& signer,
                     const std::string& version = "1.10") const {
        FileDigest digest;
        std::thread([&] { digest.add({content.data(), qsizetype(content.size())}); }).join();
        AppcastItem release{};
        release.version = QString::fromStdString(version);
        release.type = appImageType;
        const auto signature = sign(signer.secretKey, signedText(release, digest));
        return "<item><enclosure type='application/vnd.appimage' t:version='" + version +
               "' url='" + origin + path + "' length='" + std::to_string(content.size()) +
               "' t:signature='" + text(signature) + "'/></item>";
    }
    void putSigned(const std::string& name, const std::string& text) const {
        put(name, publish({serial, expires, QByteArray::fromStdString(text)}, feedKeys.secretKey)
                      .toStdString());
    }
    void putFeed(const std::string& items) const {
        putSigned("feed.xml", "<rss version='2.0' xmlns:t='https://tidewell.example/ns/updates/1'>"
                              "<channel>" +
                                  items + "</channel></rss>");
    }

    void makeUpdater() {
        updater.reset();
        bundle = Bundle(info);
        const auto open = [this](const QString& file) {
            opened = file.toStdString();
            return opensFiles;
        };
        updater.emplace(
            FeedUpdater::Environment{.bundle = bundle,
                                     .defaults = defaults,
                                     .preferences = preferences::updater,
                                     .mainThread = mainThread,
                                     .log = log,
                                     .fetching = settings,
                                     .downloadFolder = QString::fromStdString(downloads),
                                     .appImage = QString::fromStdString(appImage),
                                     .versionOnDisk = [this] { return onDisk; },
                                     .systemVersion = {},
                                     .architecture = {},
                                     .open = open,
                                     .restart = {}},
            driver, delegate);
    }
    void startUpdater(const std::string& feed = "plain/feed.xml") {
        info["SUFeedURL"] = origin + feed;
        makeUpdater();
        ASSERT_TRUE(updater->startUpdater());
    }

    /// What is on the screen and has `text` in it; null when nothing has.
    template <typename Part>
    static Part* shown(const std::string& text = {}) {
        for (QWidget* widget : QApplication::allWidgets()) {
            auto* const part = qobject_cast<Part*>(widget);
            if (part && part->isVisible() && part->text().contains(QString::fromStdString(text))) {
                return part;
            }
        }
        return nullptr;
    }
    testing::AssertionResult shows(const std::string& text) {
        if (comesTrue([&text] { return shown<QLabel>(text) != nullptr; })) {
            return testing::AssertionSuccess();
        }
        const QLabel* instead = shown<QLabel>();
        return testing::AssertionFailure()
               << "instead of \"" << text << "\" there is "
               << (instead != nullptr ? instead->text().toStdString() : "no label")
               << ", and the log " << testing::PrintToString(log.takeLines());
    }
    static void press(const char* title) {
        auto* const button = shown<QPushButton>(title);
        ASSERT_NE(button, nullptr) << title;
        button->click();
    }
    void confirm(const std::string& message) {
        EXPECT_TRUE(shows(message)) << message;
        press("OK");
    }
    void find() {
        updater->checkForUpdates();
        ASSERT_TRUE(shows("A new version"));
    }
    void install() {
        find();
        press("Install");
    }
    void installAndConfirm(const std::string& message) {
        install();
        confirm(message);
    }
    /// In place of the fetching program.
    void putProgram(const std::string& script) {
        const auto path =
            folder.write("program" + std::to_string(++programs), "#!/bin/sh\n" + script);
        fs::permissions(path, fs::perms::owner_all);
        settings.program = QString::fromStdString(path);
    }
    void waitForTheEnd() {
        EXPECT_TRUE(comesTrue([this] { return updater->canCheckForUpdates(); }));
        EXPECT_EQ(shown<QLabel>(), nullptr);
    }
    void checkSilently() {
        updater->checkForUpdateInformation();
        EXPECT_FALSE(updater->canCheckForUpdates());
        waitForTheEnd();
    }
    QStringList downloaded() const {
        return QDir(QString::fromStdString(downloads))
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::string content = "\x7f"
                          "ELF\2\1\1\3AI\2" +
                          std::string(300000, 'n') + "new";
    TemporaryFolder folder;
    const QString certificate = QString::fromStdString(folder.path() / "server.pem");
    QProcess server;
    std::string origin;
    KeyPair keys = makeKeyPair();
    KeyPair feedKeys = makeKeyPair();
    qint64 serial = 1; // of the feeds that are put from now on
    QDateTime expires = QDateTime::currentDateTimeUtc().addDays(1);
    std::string onDisk; ///< the version there
    const std::string downloads = folder.path() / "cache/updates";
    std::string appImage = folder.path() / "Tidewell.AppImage";
    FetchSettings settings;
    Bundle::InfoDictionary info{{"SUFeedURL", "https://tidewell.example/feed.xml"},
                                {"SUFeedPublicEDKey", text(feedKeys.publicKey)},
                                {"SUPublicEDKey", text(keys.publicKey)},
                                {"CFBundleShortVersionString", "1.9"}};
    Bundle bundle{{}};
    MemoryUserDefaults defaults;
    MainThread mainThread;
    RecordingLog log;
    std::shared_ptr<SPUStandardUserDriver> driver =
        std::make_shared<SPUStandardUserDriver>(u"Tidewell"_s, [] { return true; });
    RecordingDelegate delegate;
    std::vector<std::string>& answers = delegate.answers;
    std::string opened;
    bool opensFiles = true;
    int programs = 0;
    std::optional<FeedUpdater> updater;
};

TEST_F(FeedUpdaterTest, StartsOnlyWithAFeedAKeyAndAVersionAndNeverChecksAllTheTime) {
    const auto right = info;
    for (const auto& [key, text, wanted] :
         {std::tuple("SUFeedURL", "http://tidewell.example/", "http://tidewell.example/"),
          {"SUPublicEDKey", "AAAA", "not an Ed25519 public key"},
          {"SUFeedPublicEDKey", "", "not an Ed25519 public key"},
          {"CFBundleShortVersionString", "No version", "version"}}) {
        info = right;
        info[key] = text;
        makeUpdater();
        EXPECT_THAT(updater->startUpdater().error().description(), HasSubstr(wanted));
    }
    updater->checkForUpdates();
    confirm("was not set up for updates");
    for (const auto& [set, is] :
         {std::pair(604800.0, 604800.0), {1.0, 3600.0}, {-5.0, 86400.0}, {std::nan(""), 86400.0}}) {
        updater->setUpdateCheckInterval(set);
        EXPECT_EQ(updater->updateCheckInterval(), is);
    }
}

TEST_F(FeedUpdaterTest, DoesWhatUpdatersDo) {
    putFeed(item("plain/new", keys));
    info["SUFeedURL"] = origin + "plain/feed.xml";
    makeUpdater();
    expectContract(*updater, delegate, [this](const std::string& version) {
        putFeed(version.empty() ? "" : item("plain/new", keys));
        waitForTheEnd();
    });
}

TEST_F(FeedUpdaterTest, FetchesAheadInSilenceAndHandsTheVerifiedFileToTheDesktop) {
    appImage.clear();
    putFeed(item("plain/new", keys));
    startUpdater();
    checkSilently();
    EXPECT_TRUE(downloaded().isEmpty()) << "the user did not ask for it";
    updater->setAutomaticallyDownloadsUpdates(true);
    checkSilently();
    ASSERT_TRUE(
        comesTrue([this] { return downloaded() == QStringList(u"Tidewell-1.10.AppImage"_s); }));
    for (const auto& made : {fs::path(downloads), fs::path(downloads).parent_path()}) {
        EXPECT_EQ(fs::status(made).permissions(), fs::perms::owner_all) << made;
    }
    put("new", "something else");
    startUpdater(); // as after a new start of the program
    installAndConfirm("was downloaded and verified");
    EXPECT_EQ(opened, downloads + "/Tidewell-1.10.AppImage");
    EXPECT_EQ(readText(opened), content);
    const std::string file = opened;
    opensFiles = false;
    install();
    EXPECT_TRUE(shows("no program here to open it with"));
    press("Open Folder");
    EXPECT_EQ(opened, downloads);
    waitForTheEnd();

    writeText(file, "damaged");
    installAndConfirm("is not the right one"); // it was asked for again
    EXPECT_TRUE(downloaded().isEmpty());
}

TEST_F(FeedUpdaterTest, DoesAsTheUserSays) {
    putFeed(item("slow/new", keys));
    startUpdater();
    updater->checkForUpdateInformation();
    find(); // in the place of the silent one
    updater->checkForUpdates();
    EXPECT_THAT(std::exchange(answers, {}), ElementsAre("1.10"));
    press("Install");
    ASSERT_TRUE(shows("293 KB")) << "slowly";
    EXPECT_TRUE(comesTrue([this] { return downloaded() == QStringList(u".unverified"_s); }));
    press("Cancel");
    EXPECT_TRUE(comesTrue([this] { return downloaded().isEmpty(); }));

    find();
    press("Skip This Version");
    waitForTheEnd();
    checkSilently();
    EXPECT_THAT(std::exchange(answers, {}), ElementsAre("1.10", "none", "none"));
    find(); // where it is the user who asks
    shown<QLabel>()->window()->close();
    waitForTheEnd();

    putFeed("");
    updater->checkForUpdates();
    confirm("Tidewell is up to date.");
    updater->checkForUpdates();
    updater.reset();
    EXPECT_EQ(shown<QLabel>(), nullptr) << "goes with it";
}

TEST_F(FeedUpdaterTest, NeverGoesBackFromWhatLiesOnTheDisk) {
    putFeed(item("plain/new", keys, "1.12"));
    startUpdater();
    install();
    ASSERT_TRUE(shows("1.12 is installed"));
    EXPECT_EQ(readText(appImage), content);
    press("Later");
    serial = 2;
    putFeed(item("plain/new", keys, "1.11"));
    updater->checkForUpdates();
    EXPECT_TRUE(shows("1.12 is installed")) << "still to be started";
    EXPECT_EQ(defaults.value("SUFeedSerial"), DefaultsValue(2.0));
    press("Later");
    EXPECT_THAT(answers, ElementsAre("1.12", "none"));

    putFeed(item("plain/new", keys, "1.13"));
    writeText(appImage, "what somebody else has put there");
    installAndConfirm("could not be replaced");
    onDisk = "1.14";
    updater->checkForUpdates();
    EXPECT_TRUE(shows("1.14 is installed")) << "which is newer";
}

TEST_F(FeedUpdaterTest, TouchesNothingOutsideOfTheFolderThatItDownloadsInto) {
    putFeed(item("plain/new", keys));
    const auto letter = folder.write("precious/letter", "dear");
    const auto above = fs::path(downloads).parent_path();
    fs::create_directories(above);
    fs::create_directory_symlink(letter.parent_path(), downloads);
    startUpdater();
    installAndConfirm("could not be saved");
    fs::remove(downloads);
    fs::create_directories(fs::path(downloads) / "someone's");
    // Others could put something else in its place; only root can give it to another group.
    const bool isRoot = ::chown(above.c_str(), uid_t(-1), 4242) == 0;
    for (const auto others : {isRoot ? fs::perms::group_write : fs::perms::all, fs::perms::all}) {
        fs::permissions(above, fs::perms::owner_all | others);
        installAndConfirm("could not be saved");
    }
    fs::permissions(above, fs::perms::owner_all);

    fs::create_symlink(letter, fs::path(downloads) / "Tidewell-1.10.AppImage");
    writeText(fs::path(downloads) / ".unverified", "of a program that was killed");
    const auto replacement = folder.write(".Tidewell.AppImage.new", "of the same");
    startUpdater();
    EXPECT_TRUE(comesTrue(
        [&] { return !downloaded().contains(u".unverified"_s) && !fs::exists(replacement); }));
    folder.write(".Tidewell.AppImage.new", "of another that was killed meanwhile");
    install();
    ASSERT_TRUE(shows("is installed"));
    EXPECT_EQ(readText(appImage), content);
    EXPECT_TRUE(downloaded().isEmpty());
    EXPECT_FALSE(fs::exists(replacement));
    EXPECT_EQ(readText(letter), "dear");
    press("Later");

    // Swapped while the folder is held: what is done in it is not done elsewhere.
    const auto held = DownloadFolder::open(QString::fromStdString(downloads)).value();
    fs::rename(downloads, downloads + ".aside");
    fs::create_directory_symlink(letter.parent_path(), downloads);
    held.clear({});
    EXPECT_FALSE(held.file(u"letter"_s, O_RDONLY));
    fs::create_symlink(letter, fs::path(downloads + ".aside") / "linked");
    EXPECT_FALSE(held.file(u"linked"_s, O_RDONLY)) << "which was put there meanwhile";
    EXPECT_EQ(readText(letter), "dear");
}

/// How much a confined process still can of what it must not, and cannot of what it must.
int faultsWhenConfined(const std::string& folder) {
    const std::string link = folder + "/linked";
    int faults = ::symlink("/etc/passwd", link.c_str()) != 0;
    const auto lacking = confine({"/usr", "/lib", "/lib64", link});
    faults += ::open(link.c_str(), O_RDONLY) < 0; // as /etc/resolv.conf is, which leads elsewhere
    if (lacking.find("Landlock") == std::string::npos) {
        faults += ::open((folder + "/server.key").c_str(), O_RDONLY) >= 0;
        faults += ::open((folder + "/made").c_str(), O_WRONLY | O_CREAT, S_IRUSR) >= 0;
        faults += ::unlink((folder + "/server.key").c_str()) == 0;
    }
    if (lacking.find("seccomp") == std::string::npos) {
        faults += ::fork() >= 0;
        ::execl("/usr/bin/false", "false", nullptr); // which would fail the test
        faults += errno != EPERM;
        rlimit others{};
        const pid_t other = ::getppid();
        faults += ::kill(other, 0) == 0;
        faults += ::syscall(SYS_tgkill, other, other, 0) == 0;
        faults += ::prlimit(other, RLIMIT_CORE, nullptr, &others) == 0;
        faults += ::setpriority(PRIO_PROCESS, id_t(other), 0) == 0;
        faults += ::socket(AF_UNIX, SOCK_STREAM, 0) >= 0; // to a bus or a display
        faults += ::chmod(folder.c_str(), S_IRWXU | S_IRWXO) == 0;
    }
    for (const auto resource : {
             RLIMIT_CPU,
             RLIMIT_FSIZE,
#ifndef TIDEWELL_SANITIZED
             RLIMIT_DATA,
#endif
         }) {
        rlimit most{};
        faults += ::getrlimit(resource, &most) != 0 || most.rlim_max == RLIM_INFINITY;
    }
    faults += ::prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0) != 1;
    bool hasRun = false;
    std::thread([&hasRun] { hasRun = true; }).join();
    return faults + !hasRun + (::open("/usr/bin/env", O_RDONLY) < 0) + (::raise(0) != 0) +
           (::socket(AF_INET6, SOCK_STREAM, 0) < 0);
}

TEST_F(FeedUpdaterTest, FetchesInAProcessThatCanDoNothingElse) {
    testing::FLAGS_gtest_death_test_style = "fast";
    EXPECT_EXIT(std::_Exit(faultsWhenConfined(folder.path())), testing::ExitedWithCode(0), "");

    const ScopedEnvironment environment(
        {{"SECRET", "word"}, {"no_proxy", "here"}, {"SSL_CERT_FILE", certificate.toStdString()}});
    settings.authorities.clear();
    putFeed("");
    startUpdater();
    checkSilently();
    EXPECT_THAT(std::exchange(answers, {}), ElementsAre("none"));
    const auto seen = folder.path() / "environment";
    putProgram("/usr/bin/env >" + seen.string());
    startUpdater();
    checkSilently();
    EXPECT_THAT(readText(seen), AllOf(HasSubstr("no_proxy=here"), HasSubstr("KRB5CCNAME=MEMORY:"),
                                      Not(HasSubstr("word")), Not(HasSubstr("HOME="))));

    log.takeLines();
    putProgram("echo 'fetches without Landlock' >&2\nexec cat " +
               (folder.path() / "files/feed.xml").string());
    startUpdater();
    checkSilently();
    checkSilently();
    EXPECT_THAT(log.takeLines(), ElementsAre(HasSubstr("fetches without Landlock"))) << "once";
}

TEST_F(FeedUpdaterTest, InstallsNothingLeavesNothingAndSaysWhyWhereSomethingIsWrong) {
    const KeyPair stranger = makeKeyPair();
    QDateTime now = QDateTime::currentDateTimeUtc();
    put("short", content.substr(1));
    put("changed", content.substr(1) + "!");

    putFeed(item("plain/new", keys));
    const std::string feed = readText(folder.path() / "files/feed.xml");
    put("unsigned.xml", feed.substr(feed.find("<rss")));
    put("stranger.xml",
        publish({serial, expires, QByteArray::fromStdString(feed)}, keys.secretKey).toStdString());
    std::swap(expires, now);
    serial = 7;
    putSigned("expired.xml", feed);
    std::swap(expires, now);
    serial = 4;
    putSigned("older.xml", feed);
    serial = 5;
    defaults.set("SUFeedSerial", 5.0);
    putSigned("bomb.xml", "<!DOCTYPE rss [<!ENTITY a 'aa'><!ENTITY b '&a;&a;'>]><rss>&b;</rss>");

    const auto* const late = "takes too long";
    const auto* const broken = "missing or broke down";
    const auto* const incomplete = "not complete, or is not the right one. It was deleted.";
    const auto* const changed = "was changed on its way. It was deleted.";
    struct Case {
        std::string feed;
        std::string item; ///< none: the feed is what is wrong
        const char* message;
        bool isTrusted = true;
        std::string program = {}; ///< none: the one that fetches
    };
    defaults.set("SUAutomaticallyUpdate", true);
    for (const Case& each : {Case{"silent/feed.xml", "", late},
                             Case{"slow/feed.xml", "", late},
                             Case{"endless/feed.xml", "", "list of versions that cannot be read"},
                             Case{"plain/unsigned.xml", "", "was not made by the developers"},
                             Case{"plain/stranger.xml", "", "was not made by the developers"},
                             Case{"plain/expired.xml", "", "sent an old list"},
                             Case{"plain/older.xml", "", "sent an old list"},
                             Case{"plain/bomb.xml", "", "list of versions that cannot be read"},
                             Case{"broken/feed.xml", "", "cannot be reached"},
                             Case{"plain/missing.xml", "", "does not have"},
                             Case{"password/feed.xml", "", "does not have"},
                             Case{"named/feed.xml", "", "not safe"},
                             Case{"redirect-6/feed.xml", "", "not safe"},
                             Case{"weaker/feed.xml", "", "not safe"},
                             Case{"plain/feed.xml", "", "could not prove", false},
                             Case{"plain/feed.xml", "", broken, true, "exit 1"},
                             Case{"plain/feed.xml", "", broken, true, "kill -9 $$"},
                             Case{"plain/feed.xml", "", broken, true, "exec yes >&2"},
                             Case{"plain/feed.xml", "", "cannot be read", true, "exec yes"},
                             Case{"silent", "", late, true, "exec >&- 2>&-; exec sleep 60"},
                             Case{"plain/feed.xml", item("slow/new", keys), late},
                             Case{"plain/feed.xml", item("endless/new", keys), incomplete},
                             Case{"plain/feed.xml", item("plain/short", keys), incomplete},
                             Case{"plain/feed.xml", item("plain/changed", keys), changed},
                             Case{"redirect-5/feed.xml", item("plain/new", stranger), changed}}) {
        SCOPED_TRACE(each.feed + each.item + each.message);
        putFeed(each.item);
        settings.silence = each.feed.starts_with("silent") ? 1000ms : 20000ms;
        settings.feedLimit = each.feed.starts_with("slow") ? 1000ms : 20000ms;
        settings.fileLimit = each.message == late ? 1000ms : 20000ms;
        settings.program = QStringLiteral(FETCH_PROGRAM);
        if (!each.program.empty()) {
            putProgram(each.program);
        }
        settings.authorities = each.isTrusted ? certificate : QString();
        startUpdater(each.feed);
        checkSilently();
        EXPECT_TRUE(comesTrue([&] { return log.takeLines().size() == 1U; }));
        EXPECT_EQ(std::exchange(answers, {}),
                  std::vector<std::string>(each.item.empty() ? 0 : 1, "1.10"));
        EXPECT_TRUE(downloaded().isEmpty());

        updater->checkForUpdates();
        if (!each.item.empty()) {
            ASSERT_TRUE(shows("A new version"));
            press("Install");
        }
        confirm(each.message);
        EXPECT_TRUE(downloaded().isEmpty());
        EXPECT_EQ(readText(appImage), "old");
        EXPECT_EQ(log.takeLines().size(), 1U);
        answers.clear();
    }

    EXPECT_EQ(defaults.value("SUFeedSerial"), DefaultsValue(5.0)) << "no feed that was refused";

    for (const char mark : {'J', 'I'}) { // first no AppImage, then none in whose place to put it
        content[9] = mark;
        put("new", content);
        putFeed(item("plain/new", keys));
        startUpdater();
        installAndConfirm("could not be replaced");
        EXPECT_EQ(fs::remove(appImage), mark == 'J');
    }
}

TEST(NotesView, ShowsWhereLinksLeadAndNeitherPicturesNorMarkupNorDisguises) {
    NotesView view(
        u"&#x202E;[\u202Ecilbup\u202C](https://\u0435xample.org/x) ![p](https://evil.example/p) "
        u"<b>bold</b>\u2066"_s,
        {});
    EXPECT_EQ(view.toPlainText().simplified(), u"cilbup (xn--xample-2of.org) <b>bold</b>"_s);

    QTextBrowser opened; // in the place of the desktop
    for (const char* address :
         {"file:///a", "http://a.example/", "https://a.localhost/", "https://a.example/"}) {
        const QUrl url(QString::fromLatin1(address));
        QDesktopServices::setUrlHandler(url.scheme(), &opened, "setSource");
        Q_EMIT view.anchorClicked(url);
        QDesktopServices::unsetUrlHandler(url.scheme());
        EXPECT_EQ(opened.source(), isSafeLink(url) ? url : QUrl());
    }
}

} // namespace
} // namespace tidewell
