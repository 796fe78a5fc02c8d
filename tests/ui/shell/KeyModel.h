// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "app/AppState.h"
#include "app/KeyHandler.h"
#include "platform/settings/UserDefaults.h"

#include <QString>

/// What the key table promises of a key, told apart from the code that keeps the promise: the
/// controller as one sees it, and as it is to be seen after a key.
struct KeyModel {
    static KeyModel of(const AppState &app)
    {
        using namespace Qt::StringLiterals;
        KeyModel now;
        now.kind = app.phase().kind;
        now.canSwitch = app.canSwitchCards();
        now.info = app.showExifBar();
        now.autoAdvance = app.defaults()->boolean(u"autoAdvanceOnReject"_s);
        now.zoomed = app.zoomed();
        now.pan = app.zoomPan();
        now.selection = app.reviewSelection();
        now.enlarged = app.reviewEnlarged();
        now.asking = app.confirmingDelete();
        now.card = app.currentCardIndex();
        if (const auto *session = app.session()) {
            now.index = session->currentIndex();
            now.count = session->items().size();
            now.rejects = session->rejectedCount();
            const auto *item = session->currentItem();
            now.isPhoto = item && item->kind == MediaKind::photo;
            now.isRejected = item && session->isRejected(*item);
            const auto *selected = session->rejectedItem(now.selection);
            now.isPhotoSelected = selected && selected->kind == MediaKind::photo;
        }
        return now;
    }

    void press(Qt::Key key)
    {
        switch (kind) {
        case Phase::Kind::Culling:
            pressInCulling(key);
            return;
        case Phase::Kind::Review:
            enlarged ? pressEnlarged(key) : pressInReview(key);
            return;
        case Phase::Kind::CardReady:
            kind = key == Qt::Key_Return ? Phase::Kind::Scanning : kind;
            break;
        case Phase::Kind::Summary:
            kind = key == Qt::Key_Return ? Phase::Kind::CardReady : kind;
            return;
        default:
            break;
        }
        if (key == Qt::Key_Tab && canSwitch) {
            card = 1 - card; // of two
        }
    }

    /// Empty when @p seen is what was to be seen.
    [[nodiscard]] QString differenceFrom(const KeyModel &seen) const
    {
        using namespace Qt::StringLiterals;
        QStringList faults;
        const auto compare = [&faults](const QString &name, auto wanted, auto is) {
            if (wanted != is) {
                faults.append(u"%1 is %2, not %3"_s.arg(name).arg(int(is)).arg(int(wanted)));
            }
        };
        // A small card may be scanned before anybody looks.
        const bool isScanned = kind == Phase::Kind::Scanning && seen.kind == Phase::Kind::Culling;
        compare(u"phase"_s, isScanned ? seen.kind : kind, seen.kind);
        compare(u"card"_s, card, seen.card);
        compare(u"info"_s, info, seen.info);
        if (kind == seen.kind && (kind == Phase::Kind::Culling || kind == Phase::Kind::Review)) {
            compare(u"index"_s, index, seen.index);
            compare(u"rejects"_s, rejects, seen.rejects);
            compare(u"zoomed"_s, zoomed, seen.zoomed);
            compare(u"selection"_s, selection, seen.selection);
            compare(u"enlarged"_s, enlarged, seen.enlarged);
            compare(u"asking"_s, asking, seen.asking);
            // Where no zoom is on screen nobody sees it, and the next one starts unpanned.
            const bool showsZoom = zoomed && (kind == Phase::Kind::Culling || enlarged);
            if (pan != seen.pan && showsZoom) {
                faults.append(u"pan is another"_s);
            }
        }
        return faults.join(u", "_s);
    }

    Phase::Kind kind = Phase::Kind::WaitingForCard;
    qint64 card = 0;
    bool canSwitch = false;
    bool info = true;
    bool autoAdvance = true;
    bool zoomed = false;
    QSizeF pan;
    qint64 selection = 0;
    bool enlarged = false;
    bool asking = false;
    qint64 index = 0;
    qint64 count = 0;
    qint64 rejects = 0;
    bool isPhoto = false;
    bool isRejected = false;
    bool isPhotoSelected = false;

private:
    void pressInCulling(Qt::Key key)
    {
        const bool pans = zoomed && isPhoto;
        switch (key) {
        case Qt::Key_X:
            isRejected = !isRejected;
            rejects += isRejected ? 1 : -1;
            if (isRejected && autoAdvance) {
                stepForward();
            }
            break;
        case Qt::Key_Left:
            if (pans) {
                pan += QSizeF(80, 0);
            } else {
                index = std::max<qint64>(index - 1, 0);
                zoomed = false;
            }
            break;
        case Qt::Key_Right:
            if (pans) {
                pan += QSizeF(-80, 0);
            } else {
                stepForward();
            }
            break;
        case Qt::Key_Up:
            pan += QSizeF(0, pans ? 80 : 0);
            break;
        case Qt::Key_Down:
            pan += QSizeF(0, pans ? -80 : 0);
            break;
        case Qt::Key_Z:
            if (isPhoto) {
                zoomed = !zoomed;
                pan = zoomed ? QSizeF(0, 0) : pan; // every zoom starts unpanned
            }
            break;
        case Qt::Key_I:
            info = !info;
            break;
        case Qt::Key_Escape:
            kind = Phase::Kind::CardReady;
            break;
        case Qt::Key_Return:
            finish();
            break;
        default:
            break;
        }
    }

    void stepForward()
    {
        if (index + 1 < count) {
            ++index;
            zoomed = false;
        } else {
            finish();
        }
    }

    void finish()
    {
        kind = Phase::Kind::Review;
        zoomed = false;
        selection = 0;
        enlarged = false;
    }

    void pressInReview(Qt::Key key)
    {
        const auto last = std::max<qint64>(rejects - 1, 0);
        switch (key) {
        case Qt::Key_Space:
            enlarged = rejects > 0;
            zoomed = zoomed && !enlarged;
            break;
        case Qt::Key_Left:
            selection = std::max<qint64>(selection - 1, 0);
            break;
        case Qt::Key_Right:
            selection = std::min(selection + 1, last);
            break;
        case Qt::Key_Up:
            selection = std::max<qint64>(selection - 5, 0);
            break;
        case Qt::Key_Down:
            selection = std::min(selection + 5, last);
            break;
        case Qt::Key_X:
        case Qt::Key_U:
            rescue();
            break;
        case Qt::Key_Escape:
            kind = Phase::Kind::Culling;
            pan = zoomed && isPhoto ? QSizeF(0, 0) : pan;
            break;
        case Qt::Key_Return:
            asking = rejects > 0;
            break;
        default:
            break;
        }
    }

    void pressEnlarged(Qt::Key key)
    {
        switch (key) {
        case Qt::Key_Space:
        case Qt::Key_Escape:
            enlarged = false;
            break;
        case Qt::Key_Z:
            zoomed = !zoomed;
            pan = zoomed && isPhotoSelected ? QSizeF(0, 0) : pan;
            break;
        case Qt::Key_X:
        case Qt::Key_U:
            rescue();
            enlarged = false;
            break;
        default:
            break;
        }
    }

    void rescue()
    {
        rejects = std::max<qint64>(rejects - 1, 0);
        selection = std::min(selection, std::max<qint64>(rejects - 1, 0));
    }
};
