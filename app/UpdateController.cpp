// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/UpdateController.h"

#include "platform/updates/UpdateSearch.h"

#include <QCoroFuture>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPointer>
#include <QtConcurrent/qtconcurrentrun.h>

#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Outcome = UpdateResult::Kind;

/// The start of the program has better things to do.
constexpr auto firstLook = 10s;
constexpr auto nextLook = 10min;

/// Cards come one after the other, and each search may fetch everything anew.
constexpr qint64 secondsAfterBreakingOff = 60 * 60;

UpdateController::UpdateController(UserDefaults &defaults, Services services, QObject *parent)
    : QObject(parent)
    , m_services(std::move(services))
    , m_schedule(defaults)
{
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_timer.setInterval(nextLook);
        searchIfDue();
    });
}

UpdateController::~UpdateController()
{
    m_pool.waitForDone();
}

void UpdateController::start()
{
    if (m_services.makeSearch) {
        m_timer.start(firstLook);
    }
}

bool UpdateController::isUserAtWork() const
{
    using Phases = Phase::Kind;
    const auto kind = m_services.phase().kind;
    return kind == Phases::Scanning || kind == Phases::Culling || kind == Phases::Review ||
           kind == Phases::Deleting;
}

UpdateSearch &UpdateController::search()
{
    if (!m_search) {
        m_search = m_services.makeSearch();
        connect(m_search.get(), &UpdateSearch::progressed, this, &UpdateController::takeProgress);
        connect(m_search.get(), &UpdateSearch::finished, this, &UpdateController::take);
    }
    return *m_search;
}

void UpdateController::searchIfDue()
{
    if (!m_services.makeSearch || m_view.isShown || m_asker != Asker::Nobody || isUserAtWork()) {
        return;
    }
    const auto now = m_services.now();
    const auto rest = m_brokenOff.isValid() ? m_brokenOff.secsTo(now) : -1;
    const bool mayRest = rest >= 0 && rest < secondsAfterBreakingOff;
    if (mayRest || !m_schedule.isDue(now)) {
        return;
    }
    m_asker = Asker::Schedule;
    search().start(m_schedule.knownVersions(now));
}

void UpdateController::followPhase()
{
    const bool isAtWork = isUserAtWork();
    if (m_asker == Asker::Schedule && isAtWork) {
        m_asker = Asker::Nobody;
        m_brokenOff = m_services.now();
        m_search->stop();
    }
    if (m_cameByItself && m_isSetAside != isAtWork) {
        m_isSetAside = isAtWork;
        Q_EMIT changed();
    }
}

void UpdateController::checkForUpdates()
{
    m_cameByItself = false;
    m_isSetAside = false;
    if (!m_services.makeSearch) {
        show(
            {.isShown = true,
             .headline = tr("Your system keeps Kestle up to date"),
             .detail = tr("Kestle came with your system's software, and the software centre brings "
                          "newer versions."),
             .hasSoftwareCentre = true});
        return;
    }
    if (m_asker == Asker::User) {
        return;
    }
    m_asker = Asker::User; // in place of a search of our own
    m_result = {};
    show({.isShown = true, .isSearching = true, .headline = tr("Looking for a newer version…")});
    search().start();
}

void UpdateController::dismiss()
{
    if (m_asker == Asker::User) {
        m_asker = Asker::Nobody;
        m_search->stop();
    }
    m_cameByItself = false;
    m_isSetAside = false;
    m_result = {}; // and its download
    show({});
}

void UpdateController::takeProgress(qint64 fetched, qint64 whole)
{
    const auto percent = whole > 0 ? 100 * fetched / whole : 0;
    const auto before = m_view.toFetch > 0 ? 100 * m_view.fetched / m_view.toFetch : -1;
    if (m_asker != Asker::User || percent == before) {
        return;
    }
    auto view = m_view;
    view.fetched = fetched;
    view.toFetch = whole;
    view.headline = tr("Checking a newer version…");
    view.detail = tr("%1% of its download is here.").arg(percent);
    show(view);
}

void UpdateController::take(const UpdateResult &result)
{
    const auto asker = std::exchange(m_asker, Asker::Nobody);
    const auto now = m_services.now();
    m_schedule.noteSearch(now);
    const bool isAtFault = result.kind == Outcome::NotVerified || result.kind == Outcome::NotKept;
    if (isAtFault && !result.version.isEmpty()) {
        m_schedule.noteFailed(result.version, now);
    }
    if (asker == Asker::Schedule && result.kind != Outcome::NewVersion) {
        return;
    }
    if (result.kind == Outcome::NewVersion) {
        m_schedule.noteTold(result.version);
    }
    m_cameByItself = asker == Asker::Schedule;
    m_result = result;
    show(viewOf(result));
}

UpdateController::View UpdateController::viewOf(const UpdateResult &result) const
{
    View view{.isShown = true, .headline = tr("Kestle could not look for a newer version")};
    switch (result.kind) {
    case Outcome::UpToDate:
    case Outcome::KnownAlready:
        view.headline = tr("Kestle is up to date");
        view.detail = tr("You have the newest version, %1.").arg(m_services.version);
        break;
    case Outcome::NewVersion:
        view.headline = tr("There is a newer version, %1").arg(result.shownVersion);
        view.detail = (result.isFeedSigned
                           ? tr("You have %1. The newer version was signed by Kestle's makers.")
                           : tr("You have %1. The download was signed by Kestle's makers; of which "
                                "version it is, only the server says."))
                          .arg(m_services.version);
        break;
    case Outcome::NotReached:
        view.detail = tr("The server could not be reached, or did not answer.");
        break;
    case Outcome::NotAFeed:
        view.detail = tr("What the server answered could not be read.");
        break;
    case Outcome::NotVerified:
        view.detail =
            tr("What the server answered was not signed by Kestle's makers. It was thrown "
               "away.");
        break;
    case Outcome::NotKept:
        view.detail = tr("There was no room to keep the newer version until it is checked.");
        break;
    }
    return view;
}

void UpdateController::show(const View &view)
{
    m_view = view;
    Q_EMIT changed();
}

/// Where a number may stand in the name of a file: before ".zip" or ".tar.xz".
static qsizetype endOfStem(const QString &name)
{
    const auto dot = name.lastIndexOf(u'.');
    const auto before = name.left(dot);
    const bool isArchive = dot > 0 && before.endsWith(".tar"_L1);
    return dot <= 0 ? name.size() : isArchive ? before.size() - 4 : dot;
}

/// Copies @p source into @p folder under @p name, or with a number where something else has it.
/// The copy's name; empty when there is none.
static QString copyInto(const QString &folder, const QString &name, const QString &source)
{
    for (int number = 1; number < 1000; ++number) {
        auto candidate = name;
        if (number > 1) {
            candidate.insert(endOfStem(name), u" (%1)"_s.arg(number));
        }
        const auto target = QDir(folder).filePath(candidate);
        if (!QFileInfo(target).isSymLink() && !QFile::exists(target)) {
            return QFile::copy(source, target) ? candidate : QString();
        }
    }
    return {};
}

void UpdateController::saveDownload()
{
    if (canSave()) {
        save(m_result, m_services.downloadFolder());
    }
}

QCoro::Task<> UpdateController::save(UpdateResult result, QString folder)
{
    const QPointer self(this);
    m_isSaving = true;
    Q_EMIT changed();
    const auto work = [folder, name = result.fileName, file = result.download] {
        QDir().mkpath(folder);
        return copyInto(folder, name, QFile::decodeName(QByteArray::fromStdString(file->native())));
    };
    const QString saved = co_await QtConcurrent::run(&m_pool, work);
    if (!self) {
        co_return;
    }
    m_isSaving = false;
    if (m_result.download != result.download) {
        Q_EMIT changed(); // of another one, which may be saved now
        co_return;
    }
    auto view = m_view;
    view.isSaved = !saved.isEmpty();
    view.detail = saved.isEmpty() ? tr("It could not be saved to %1.").arg(folder)
                                  : tr("Saved as %1 in %2.").arg(saved, folder);
    show(view);
    if (!saved.isEmpty()) {
        (void)m_services.openAddress(QUrl::fromLocalFile(folder));
    }
}

void UpdateController::openPage()
{
    if (hasPage() && !m_services.openAddress(m_result.page)) {
        auto view = m_view;
        view.detail =
            tr("No browser could be opened. The page is %1").arg(m_result.page.toString());
        show(view);
    }
}

void UpdateController::openSoftwareCentre()
{
    // By the scheme of AppStream's component addresses.
    if (m_services.openAddress(QUrl(u"appstream:"_s + m_services.applicationId))) {
        dismiss();
        return;
    }
    auto view = m_view;
    view.detail =
        tr("No software centre could be opened. Your package manager brings newer versions.");
    view.hasSoftwareCentre = false;
    show(view);
}
