// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/modNotices.h"

#include <algorithm>

bool Notices::Put(NoticeTopic topic, const Notice &notice)
{
    const auto before = Current();
    m_notices.insert_or_assign(topic, notice);
    return Current() != before;
}

bool Notices::Remove(NoticeTopic topic)
{
    const bool isCurrent = !m_notices.empty() && m_notices.begin()->first == topic;
    m_notices.erase(topic);
    return isCurrent;
}

std::optional<std::pair<NoticeTopic, Notice>> Notices::Current() const
{
    if (m_notices.empty())
        return std::nullopt;
    return *m_notices.begin();
}

NoticeFit FitNotice(const NoticeWidths &widths, int availablePx)
{
    NoticeFit fit{.textPx = widths.textPx, .offers = int(widths.offers.size()), .hasKeys = true};
    const auto offersPx = [&widths, &fit] {
        int sum = 0;
        for (int i = 0; i < fit.offers; ++i) {
            const NoticeWidths::Offer &offer = widths.offers[size_t(i)];
            sum += widths.gapPx + (fit.hasKeys ? offer.withKeyPx : offer.withoutKeyPx);
        }
        return sum;
    };
    const auto fits = [&] { return fit.textPx + offersPx() <= availablePx; };
    if (fits())
        return fit;
    fit.hasKeys = false;
    if (fits())
        return fit;
    fit.textPx = std::min(widths.textPx, widths.leastTextPx);
    while (fit.offers > 0 && !fits())
        --fit.offers;
    fit.textPx = std::clamp(availablePx - offersPx(), 0, widths.textPx); // all the rest
    return fit;
}
