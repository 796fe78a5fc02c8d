// SPDX-FileCopyrightText: 2026 Kestle contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/decode/BitmapCache.h"

void BitmapCache::insert(const QString &key, const QImage &bitmap)
{
    if (bitmap.isNull()) {
        return;
    }
    if (!m_bitmaps.contains(key)) {
        m_order.append(key);
    }
    m_bitmaps.insert(key, bitmap);
    while (m_order.size() > m_cap) {
        m_bitmaps.remove(m_order.takeFirst());
    }
}

void BitmapCache::clear()
{
    m_bitmaps.clear();
    m_order.clear();
}
