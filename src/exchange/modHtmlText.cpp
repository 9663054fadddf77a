// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modHtmlText.h"

#include <algorithm>
#include <utility>

namespace {

/// The name of a tag, given the text after "<"; empty if it is not a tag.
QStringView TagName(QStringView inside)
{
    if (inside.startsWith(u'/'))
        inside = inside.sliced(1);
    const auto end = std::ranges::find_if(inside, [](QChar character) { return !character.isLetterOrNumber(); });
    const QStringView name = inside.first(end - inside.begin());
    return name.isEmpty() || !name.front().isLetter() ? QStringView() : name;
}

bool BreaksLine(QStringView tagName)
{
    constexpr QStringView names[] = {u"br", u"div", u"p", u"li", u"tr", u"td"};
    return std::ranges::any_of(names,
                               [tagName](QStringView name) { return tagName.compare(name, Qt::CaseInsensitive) == 0; });
}

/// The character of an entity, given the text between "&" and ";"; 0 if it is not an entity.
char32_t CharacterOf(QStringView entity)
{
    constexpr std::pair<QStringView, char32_t> named[] = {{u"amp", U'&'},  {u"lt", U'<'},    {u"gt", U'>'},
                                                          {u"quot", U'"'}, {u"apos", U'\''}, {u"nbsp", U'\u00A0'}};
    const auto *const known = std::ranges::find(named, entity, [](const auto &each) { return each.first; });
    if (known != std::end(named))
        return known->second;
    if (!entity.startsWith(u'#'))
        return 0;
    const bool isHex = entity.startsWith(u"#x") || entity.startsWith(u"#X");
    const char32_t number = isHex ? entity.sliced(2).toUInt(nullptr, 16) : entity.sliced(1).toUInt();
    const bool isCharacter = number >= U' ' && number <= QChar::LastValidCodePoint && !QChar::isSurrogate(number);
    return isCharacter ? number : 0;
}

} // namespace

QString TextOfHtml(QStringView html)
{
    constexpr qsizetype longestTagName = 20;
    constexpr qsizetype longestEntity = 10; // between "&" and ";"
    // Without these bounds, every unterminated "<" or "[sound:" would search to the end of the text: quadratic time.
    const qsizetype lastTagEnd = html.lastIndexOf(u'>');
    const qsizetype lastBracket = html.lastIndexOf(u']');
    QString text;
    for (qsizetype at = 0; at < html.size();) {
        const QChar character = html[at];
        const QStringView rest = html.sliced(at + 1);
        if (character == u'<' && at < lastTagEnd) {
            const QStringView name = TagName(rest.first(qMin(rest.size(), longestTagName)));
            if (!name.isEmpty() || rest.startsWith(u"!--")) {
                if (BreaksLine(name))
                    text += u' ';
                at += rest.indexOf(u'>') + 2;
                continue;
            }
        } else if (character == u'&') {
            const qsizetype end = rest.first(qMin(rest.size(), longestEntity)).indexOf(u';');
            if (const char32_t meant = end < 0 ? 0 : CharacterOf(rest.first(end)); meant != 0) {
                text += QString::fromUcs4(&meant, 1);
                at += end + 2;
                continue;
            }
        } else if (character == u'[' && at < lastBracket && rest.startsWith(u"sound:")) {
            at += rest.indexOf(u']') + 2;
            continue;
        }
        text += character == u'\n' || character == u'\r' ? QChar(u' ') : character;
        ++at;
    }
    return text;
}
