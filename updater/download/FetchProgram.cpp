// tidewell-fetch ADDRESS MILLISECONDS PARENT [AUTHORITIES]
//
// Writes what is found at an address to standard output, and says with its exit status what became
// of that. Gives up when nothing came for so many milliseconds, and ends with PARENT, the process
// that started it. AUTHORITIES is a file of certificates in PEM form that are trusted besides the
// system's, as is the one that SSL_CERT_FILE names.
//
// A program of its own, since the network and TLS libraries take 2 MB of private memory that a
// process does not get rid of any more, nearly as much as all of Tidewell: so it goes with them.
// And what a hostile server makes of them stays in a process that can do nothing but write to its
// two streams: it cannot read the user's files, write any, or start a program.

#include "updater/UpdateProblem.h"
#include "updater/download/Confinement.h"
#include "updater/feed/SafeAddress.h"

#include <QCoreApplication>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSslCertificate>
#include <QSslConfiguration>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <sys/prctl.h>
#include <unistd.h>

namespace tidewell {
namespace {

constexpr int mostRedirects = 5;
constexpr qint64 bufferSize = qint64{256} << 10;

UpdateProblem problemOf(QNetworkReply::NetworkError error) {
    switch (error) {
    case QNetworkReply::SslHandshakeFailedError:
        return UpdateProblem::untrusted;
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError: // the transfer's time-out, in Qt 6.4
        return UpdateProblem::timedOut;
    default:
        // Numbered by layer: the connection and the proxy, then what the server answers.
        return error < QNetworkReply::ContentAccessDenied ? UpdateProblem::unreachable
                                                          : UpdateProblem::refused;
    }
}

void fail(UpdateProblem problem, const QString& reason) {
    std::fputs(reason.toUtf8().append('\n').constData(), stderr);
    QCoreApplication::exit(static_cast<int>(problem));
}

bool isTheFile(const QNetworkReply& reply) {
    return reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == 200;
}

/// Asks for an address, and where the answer sends it on, for the next. Redirects are followed by
/// hand: the library would not tell where each one comes from.
class Fetching {
public:
    Fetching(int milliseconds, const QString& authorities) {
        output_.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered);
        request_.setTransferTimeout(milliseconds);
        request_.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                              QNetworkRequest::ManualRedirectPolicy);
        request_.setAttribute(QNetworkRequest::Http2AllowedAttribute, false); // one stream will do
        request_.setRawHeader("User-Agent", "Tidewell");
        // Nobody who asks for a password or a cookie gets one. There should be none: an address
        // with one in it is refused, and the environment leads to no ticket.
        for (const auto attribute : {QNetworkRequest::AuthenticationReuseAttribute,
                                     QNetworkRequest::CookieLoadControlAttribute,
                                     QNetworkRequest::CookieSaveControlAttribute}) {
            request_.setAttribute(attribute, QNetworkRequest::Manual);
        }
        // Nothing that swells when it is unpacked.
        request_.setRawHeader("Accept-Encoding", "identity");
        // Qt itself knows the system's only.
        for (const QString& file : {authorities, qEnvironmentVariable("SSL_CERT_FILE")}) {
            if (!file.isEmpty()) {
                QSslConfiguration security = request_.sslConfiguration();
                security.addCaCertificates(QSslCertificate::fromPath(file));
                request_.setSslConfiguration(security);
            }
        }
    }

    void ask(const QUrl& address) {
        request_.setUrl(address);
        QNetworkReply* reply = manager_.get(request_);
        reply->setReadBufferSize(bufferSize);
        QObject::connect(reply, &QNetworkReply::readyRead, reply, [this, reply] {
            const QByteArray bytes = reply->readAll();
            if (isTheFile(*reply) && !write(bytes)) {
                reply->disconnect();
                fail(UpdateProblem::broken, QStringLiteral("nobody reads"));
            }
        });
        // Six at most, which end with the process: to delete one would race with the network's
        // thread.
        QObject::connect(reply, &QNetworkReply::finished, reply, [this, reply] { finish(*reply); });
    }

private:
    /// False when nobody reads any more.
    bool write(const QByteArray& bytes) { return output_.write(bytes) == bytes.size(); }

    void finish(QNetworkReply& reply) {
        const QUrl target = reply.attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        if (reply.error() != QNetworkReply::NoError) {
            fail(problemOf(reply.error()), reply.errorString());
        } else if (!target.isEmpty()) {
            follow(reply.url(), reply.url().resolved(target));
        } else if (!isTheFile(reply)) {
            fail(UpdateProblem::refused, QStringLiteral("the server did not send the file"));
        } else if (!write(reply.readAll())) {
            fail(UpdateProblem::broken, QStringLiteral("nobody reads"));
        } else {
            QCoreApplication::exit();
        }
    }

    void follow(const QUrl& from, const QUrl& to) {
        if (!isSafeRedirect(from, to)) {
            fail(UpdateProblem::badRedirect, QStringLiteral("it is sent on to an unsafe place"));
        } else if (redirectsLeft_-- == 0) {
            fail(UpdateProblem::badRedirect, QStringLiteral("it is sent on too often"));
        } else {
            ask(to);
        }
    }

    QFile output_;
    QNetworkAccessManager manager_;
    QNetworkRequest request_;
    int redirectsLeft_ = mostRedirects;
};

/// What the libraries read: themselves, how names are looked up and how servers are trusted. Some
/// systems keep files of /etc elsewhere and link to them: Landlock looks at what a link leads to,
/// so that such links are named themselves.
std::vector<std::string> readablePaths(const char* authorities) {
    std::error_code error; // a program that does not find itself has no libraries of its own
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", error).parent_path();
    std::vector<std::string> paths{"/usr",
                                   "/lib",
                                   "/lib64",
                                   "/etc",
                                   "/etc/resolv.conf",
                                   "/etc/ssl/certs",
                                   "/etc/ssl/ca-bundle.pem",
                                   "/etc/pki/tls/certs/ca-bundle.crt",
                                   "/var/lib/ca-certificates",
                                   "/nix/store",
                                   "/gnu/store",
                                   "/dev/null",
                                   "/dev/urandom",
                                   "/proc/self",
                                   "/proc/sys",
                                   "/proc/cpuinfo",
                                   "/proc/meminfo",
                                   "/sys/devices/system/cpu",
                                   "/run/systemd/resolve",
                                   "/run/resolvconf",
                                   "/run/NetworkManager",
                                   "/run/nscd",
                                   folder.string(),
                                   (folder / "../../lib").string(),
                                   (folder / "../../plugins").string(),
                                   authorities};
    if (const char* path =
            std::getenv("SSL_CERT_FILE")) { // NOLINT(concurrency-mt-unsafe): one thread
        paths.emplace_back(path);
    }
    return paths;
}

} // namespace
} // namespace tidewell

int main(int argc, char** argv) {
    using namespace tidewell;
    // Nothing that was begun for a program is gone on with when that has ended.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::signal(SIGPIPE, SIG_IGN);    // NOLINT(cert-err33-c): it cannot fail
    constexpr int authorities = 4; // the argument
    const std::string lacking = confine(readablePaths(argc > authorities ? argv[authorities] : ""));
    if (!lacking.empty()) {
        std::fprintf(stderr, "fetches without: %s\n", lacking.c_str());
    }
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QUrl address(arguments.value(1), QUrl::StrictMode);
    bool isNumber = false;
    const int milliseconds = arguments.value(2).toInt(&isNumber);
    // It may have ended before the signal was asked for.
    const bool hasParent = arguments.value(3) == QString::number(::getppid());
    if (!isSafeAddress(address) || !isNumber || milliseconds <= 0 || !hasParent) {
        std::fputs("usage: tidewell-fetch ADDRESS MILLISECONDS PARENT [AUTHORITIES]\n", stderr);
        return static_cast<int>(UpdateProblem::broken);
    }
    Fetching fetching(milliseconds, arguments.value(authorities));
    fetching.ask(address);
    // At once, as nothing is left to be written: the network's thread may still be on its way out,
    // and takes what exit() would have OpenSSL tidy away under it.
    ::_exit(QCoreApplication::exec());
}
