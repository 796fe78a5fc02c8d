// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/app/walk/Walker.h"

using namespace Qt::StringLiterals;
using Kind = ModelPhase::Kind;

// What the user does, at any time.

namespace {

struct Key {
    QString chars;
    quint16 code;
    int whileCulling; ///< how likely it is there
    int inReview;
    int elsewhere;
};

} // namespace

static const std::vector<Key> &keys()
{
    static const std::vector<Key> all = {
        {u"x"_s, KeyPress::None, 30, 8, 3}, {u"u"_s, KeyPress::None, 2, 6, 1},
        {u"z"_s, KeyPress::None, 8, 5, 1},  {u"i"_s, KeyPress::None, 3, 1, 1},
        {u"j"_s, KeyPress::None, 4, 3, 1},  {u"k"_s, KeyPress::None, 4, 3, 1},
        {u"l"_s, KeyPress::None, 4, 3, 1},  {u"q"_s, KeyPress::None, 1, 1, 1},
        {u""_s, KeyPress::None, 1, 1, 1},   {u"\r"_s, KeyPress::Return, 4, 12, 30},
        {u"\t"_s, KeyPress::Tab, 2, 2, 20}, {u" "_s, KeyPress::Space, 5, 12, 2},
        {u""_s, KeyPress::Escape, 3, 5, 2}, {u""_s, KeyPress::Left, 10, 8, 2},
        {u""_s, KeyPress::Right, 24, 8, 2}, {u""_s, KeyPress::Up, 5, 4, 1},
        {u""_s, KeyPress::Down, 5, 4, 1},
    };
    return all;
}

void Walker::pressKey()
{
    note(u"key"_s);
    pressOneKey();
}

/// Faster than anything is answered.
void Walker::pressKeys()
{
    note(u"keys"_s);
    m_world.hold();
    for (int count = m_dice.between(2, 6); count > 0; --count) {
        pressOneKey();
    }
}

void Walker::pressOneKey()
{
    std::vector<int> weights;
    for (const auto &key : keys()) {
        weights.push_back(m_model.is(Kind::Culling)  ? key.whileCulling
                          : m_model.is(Kind::Review) ? key.inReview
                                                     : key.elsewhere);
    }
    const auto &key = keys()[m_dice.weighted(weights)];
    const bool command = m_dice.oneIn(25);
    const auto name = key.code == KeyPress::None ? key.chars : QString::number(key.code);
    m_trail.last() += u" "_s + name + (command ? u" with command"_s : u""_s);
    const bool isConsumed = m_controller.keys().handleKey(
        {.chars = key.chars, .keyCode = key.code, .command = command});
    if (isConsumed != m_model.press(key.chars, key.code, command)) {
        m_offences.append(isConsumed ? u"the key should pass"_s : u"the key should not pass"_s);
    }
}

void Walker::chooseFromMenu()
{
    const auto letter = m_dice.oneOf(std::vector{u"x"_s, u"z"_s, u"i"_s});
    switch (m_dice.weighted({30, 10, 4, 5})) {
    case 0:
        note(u"menu: undo"_s);
        m_controller.menu().undoDecision();
        m_model.menuUndo();
        break;
    case 1:
        note(u"menu: %1"_s.arg(letter));
        m_controller.menu().sendKey(letter);
        (void)m_model.press(letter, KeyPress::None, false);
        break;
    case 2:
        note(u"menu: finish"_s);
        m_controller.menu().finishCulling();
        m_model.menuFinish();
        break;
    default:
        note(u"menu: back"_s);
        m_controller.menu().backToCardScreen();
        m_model.menuBack();
    }
}

void Walker::switchToCard()
{
    const int index = m_dice.between(-1, static_cast<int>(m_model.state().availableCards.size()));
    note(u"switch to card at %1"_s.arg(index));
    app().switchToCardAt(index);
    m_model.switchToCardAt(index);
}

void Walker::cycleCard()
{
    note(u"cycle card"_s);
    app().cycleCard();
    m_model.cycleCard();
}

void Walker::grantAccess()
{
    note(u"grant access"_s);
    app().grantAccess();
    m_model.grantAccess();
}

void Walker::startCulling()
{
    note(u"start culling"_s);
    app().startCulling();
    m_model.startCulling();
}

void Walker::selectItem()
{
    const int index = m_dice.between(-1, 7);
    note(u"select item %1"_s.arg(index));
    app().selectItem(index);
    m_model.selectItem(index);
}

void Walker::goToReview()
{
    note(u"go to review"_s);
    app().goToReview();
    m_model.goToReview();
}

void Walker::backToCulling()
{
    note(u"back to culling"_s);
    app().backToCulling();
    m_model.backToCulling();
}

void Walker::backToCardScreen()
{
    note(u"back to card screen"_s);
    app().backToCardScreen();
    m_model.backToCardScreen();
}

void Walker::rescueSelected()
{
    note(u"rescue selected"_s);
    app().rescueSelected();
    m_model.rescueSelected();
}

/// Only what is rejected in the review may be removed, and only from the card that is there now.
void Walker::performDelete()
{
    note(u"delete"_s);
    if (app().phase() == Phase::review() && app().session() && app().card()) {
        const auto root = app().card()->volumeURL;
        const auto *mount = m_model.world.mountAt(root.native());
        for (const auto &item : app().session()->rejectedItems()) {
            for (const auto &url : item.allURLs()) {
                m_world.allowRemoval(mount->life, url.lexically_relative(root / "DCIM").native());
            }
        }
        m_controller.watch().expectDeletion();
    }
    app().performDelete();
    m_model.performDelete();
}

void Walker::closeSummary()
{
    note(u"close summary"_s);
    app().closeSummary();
    m_model.closeSummary();
}

/// A clip, when there is one; the current item at times.
void Walker::playVideo()
{
    const auto &session = m_model.state().session;
    if (!session || !app().session() || session->count() != app().session()->items().size()) {
        note(u"nothing plays"_s);
        return;
    }
    auto index = static_cast<size_t>(m_dice.below(static_cast<int>(session->count())));
    for (size_t other = 0; other < session->items.size() && !m_dice.oneIn(4); ++other) {
        index = session->items[other].isVideo ? other : index;
    }
    if (session->current().isVideo && !m_dice.oneIn(3)) {
        index = static_cast<size_t>(session->index);
    }
    note(u"play %1"_s.arg(session->items[index].id));
    app().playVideo(app().session()->items().at(static_cast<qsizetype>(index)));
    m_model.playVideo(session->items[index]);
}

void Walker::selectReject()
{
    const int selection = m_dice.between(-1, 7);
    note(u"select reject %1"_s.arg(selection));
    app().setReviewSelection(selection);
    m_model.setReviewSelection(selection);
}

void Walker::askOrCancel()
{
    const bool confirming = m_dice.oneIn(2);
    note(confirming ? u"ask for confirmation"_s : u"cancel"_s);
    app().setConfirmingDelete(confirming);
    m_model.setConfirmingDelete(confirming);
}

void Walker::dragZoomed()
{
    const QSizeF pan(m_dice.between(-9, 9), m_dice.between(-9, 9));
    note(u"drag"_s);
    app().setZoomPan(pan);
    m_model.setZoomPan(pan);
}
