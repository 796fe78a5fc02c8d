// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/updates/Updater.h"

#include "platform/updates/PlainNotes.h"

#include <QCoroFuture>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QSysInfo>
#include <QTemporaryFile>
#include <QtConcurrent/qtconcurrentrun.h>

using namespace Qt::StringLiterals;
using Kind = UpdateResult::Kind;
using Outcome = BoundedDownload::Outcome;

Updater::Updater(UpdateFeed feed, Appcast::Host host, Options options, QObject *parent)
    : UpdateSearch(parent)
    , m_feed(std::move(feed))
    , m_host(std::move(host))
    , m_options(std::move(options))
{
    connect(&m_feedDownload, &BoundedDownload::finished, this, &Updater::takeFeed);
    connect(&m_fileDownload, &BoundedDownload::finished, this, &Updater::takeDownload);
    connect(&m_fileDownload, &BoundedDownload::progressed, this,
            [this](qint64 bytes) { Q_EMIT progressed(bytes, m_item.length); });
}

Updater::~Updater()
{
    stop();
    m_pool.waitForDone();
}

Appcast::Host Updater::thisHost(const QString &version)
{
    return {.version = version, .systemVersion = QSysInfo::kernelVersion()};
}

void Updater::start(const QStringList &known)
{
    stop();
    m_known = known;
    m_feedBytes.setData({});
    m_feedBytes.open(QIODevice::WriteOnly);
    m_feedDownload.start(m_feed.address, m_options.feed, &m_feedBytes);
}

void Updater::stop()
{
    ++m_search;
    m_feedDownload.stop();
    m_fileDownload.stop();
    m_feedBytes.close();
    m_file.reset();
}

static Kind kindOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::TooLarge:
        return Kind::NotAFeed;
    case Outcome::NotKept:
        return Kind::NotKept;
    default:
        return Kind::NotReached;
    }
}

void Updater::takeFeed(Outcome outcome)
{
    m_feedBytes.close();
    if (outcome != Outcome::Complete) {
        finish({.kind = kindOf(outcome)});
        return;
    }
    const auto feed = SignedFeed::judged(m_feedBytes.data(), m_feed.key);
    m_trust = feed.trust;
    if (m_trust == SignedFeed::Trust::Forged ||
        (m_feed.mustBeSigned && m_trust != SignedFeed::Trust::Signed)) {
        finish({.kind = Kind::NotVerified});
        return;
    }
    const auto appcast = Appcast::read(feed.content, m_feed.address);
    if (!appcast) {
        finish({.kind = Kind::NotAFeed});
        return;
    }
    const auto newest = appcast->newestFor(m_host, m_trust == SignedFeed::Trust::Signed);
    if (!newest) {
        finish({.kind = Kind::UpToDate});
        return;
    }
    m_item = *newest;
    if (m_known.contains(m_item.version)) {
        finish({.kind = Kind::KnownAlready, .version = m_item.version});
    } else if (m_item.download.isEmpty()) {
        finish(offer());
    } else {
        fetch();
    }
}

/// Makes @p folder for this user alone; what is there already stays as it is.
static void make(const QString &folder)
{
    const QFileInfo info(folder);
    QDir().mkpath(info.path());
    QDir(info.path())
        .mkdir(info.fileName(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void Updater::fetch()
{
    auto limits = m_options.download;
    if (m_item.length > limits.size) {
        fail(Kind::NotVerified);
        return;
    }
    limits.size = m_item.length;
    const auto folder = QFile::decodeName(QByteArray::fromStdString(m_options.folder.native()));
    make(folder);
    m_file = std::make_shared<QTemporaryFile>(folder + u"/download-XXXXXX"_s);
    // Without a name from now on, so that nothing is left behind however the program ends.
    if (!m_file->open() || !QFile::remove(m_file->fileName())) {
        fail(Kind::NotKept);
        return;
    }
    m_fileDownload.start(m_item.download, limits, m_file.get());
}

void Updater::takeDownload(Outcome outcome)
{
    if (outcome == Outcome::TooLarge ||
        (outcome == Outcome::Complete && m_file->size() != m_item.length)) {
        fail(Kind::NotVerified);
    } else if (outcome != Outcome::Complete) {
        fail(kindOf(outcome));
    } else if (!m_file->flush()) {
        fail(Kind::NotKept);
    } else {
        judge(m_file, m_item);
    }
}

/// By which this program opens a file that has no name any more (proc(5)).
static QString nameOf(const QTemporaryFile &file)
{
    return u"/proc/self/fd/%1"_s.arg(file.handle());
}

static bool isSigned(const QString &name, const PublicKey &key, const QByteArray &signature)
{
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const auto size = file.size();
    auto *const bytes = file.map(0, size);
    return bytes && key.verifies({reinterpret_cast<const char *>(bytes), size}, signature);
}

QCoro::Task<> Updater::judge(std::shared_ptr<QTemporaryFile> file, AppcastItem item)
{
    const QPointer self(this);
    const auto search = m_search;
    const auto work = [name = nameOf(*file), key = m_feed.key, signature = item.signature] {
        return isSigned(name, key, signature);
    };
    const bool isGood = co_await QtConcurrent::run(&m_pool, work);
    if (!self || search != m_search) {
        co_return;
    }
    if (isGood) {
        finish(offer());
    } else {
        fail(Kind::NotVerified);
    }
}

/// In bytes. File systems have room for 255, and a number may be added.
constexpr qsizetype longestName = 200;

/// A name of one file, that is seen and hides nothing.
static QString fileNameOf(const AppcastItem &item)
{
    QString name = item.download.fileName(QUrl::FullyDecoded);
    // Halves of pairs are not printed either.
    name.removeIf([](QChar character) { return !character.isPrint() || character == u'/'; });
    name = name.right(longestName);
    while (name.startsWith(u'.') || name.toUtf8().size() > longestName) {
        name.remove(0, 1);
    }
    return name.isEmpty() ? u"Kestle"_s : name;
}

UpdateResult Updater::offer() const
{
    UpdateResult result{.kind = Kind::NewVersion, .version = m_item.version};
    result.isFeedSigned = m_trust == SignedFeed::Trust::Signed;
    if (result.isFeedSigned) {
        result.shownVersion = m_item.shownVersion;
        result.notes = m_item.notes;
        result.page = m_item.page;
    } else {
        result.shownVersion = plainLine(m_item.version);
    }
    if (m_file) {
        result.fileName = fileNameOf(m_item);
        const auto name = nameOf(*m_file).toStdString();
        // The file goes with the last copy of its name.
        result.download = {new std::filesystem::path(name),
                           [file = m_file](const std::filesystem::path *path) { delete path; }};
    }
    return result;
}

/// The download is at fault.
void Updater::fail(Kind kind)
{
    finish({.kind = kind, .version = m_item.version});
}

void Updater::finish(const UpdateResult &result)
{
    stop();
    Q_EMIT finished(result);
}
