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

constexpr qsizetype LongestTagName = 20;
constexpr qsizetype LongestEntity = 10; // between "&" and ";"

/// The value of an attribute with its entities decoded.
QString Decoded(QStringView value)
{
    QString text;
    while (!value.isEmpty()) {
        const qsizetype end =
            value.startsWith(u'&') ? value.first(qMin(value.size(), LongestEntity + 2)).indexOf(u';') : -1;
        const char32_t meant = end < 0 ? 0 : CharacterOf(value.sliced(1, end - 1));
        text += meant == 0 ? value.first(1).toString() : QString::fromUcs4(&meant, 1);
        value = value.sliced(meant == 0 ? 1 : end + 1);
    }
    return text;
}

/// The file in the "src" of an "<img>", given what is between "<" and ">"; empty for any other tag, and if "src" is
/// more than the name of a file.
QString FileOfImage(QStringView tag)
{
    if (TagName(tag.first(qMin(tag.size(), LongestTagName))).compare(u"img", Qt::CaseInsensitive) != 0)
        return QString();
    const auto isSpace = [](QChar character) { return character.isSpace() || character == u'/'; };
    tag = tag.sliced(3);
    while (!tag.isEmpty()) {
        if (isSpace(tag.front())) {
            tag = tag.sliced(1);
            continue;
        }
        const auto nameEnd =
            std::ranges::find_if(tag, [&isSpace](QChar character) { return character == u'=' || isSpace(character); });
        const QStringView name = tag.first(nameEnd - tag.begin());
        tag = tag.sliced(name.size()).trimmed();
        if (!tag.startsWith(u'=')) {
            if (name.isEmpty())
                break;
            continue;
        }
        tag = tag.sliced(1).trimmed();
        const bool isQuoted = tag.startsWith(u'"') || tag.startsWith(u'\'');
        const qsizetype start = isQuoted ? 1 : 0;
        const auto valueEnd = isQuoted ? std::find(tag.begin() + 1, tag.end(), tag.front())
                                       : std::ranges::find_if(tag, [](QChar character) { return character.isSpace(); });
        const QStringView value = tag.sliced(start, valueEnd - tag.begin() - start);
        tag = tag.sliced(qMin(tag.size(), start + value.size() + start));
        if (name.compare(u"src", Qt::CaseInsensitive) != 0)
            continue;
        const QString file = QString::fromUtf8(QByteArray::fromPercentEncoding(Decoded(value).toUtf8())).trimmed();
        const bool isName = std::ranges::none_of(file, [](QChar character) {
            return character == u'/' || character == u'\\' || character == u':' || character < u' ';
        });
        return isName ? file : QString();
    }
    return QString();
}

/// The reference to the picture that a tag shows; empty if there is none. @param tag  between "<" and ">"
QString ReferenceOf(QStringView tag, const PictureNameOf &pictureNameOf)
{
    const QString file = pictureNameOf ? FileOfImage(tag) : QString();
    const QString name = file.isEmpty() ? QString() : pictureNameOf(file);
    return name.isEmpty() ? name : u'｢' + name + u'｣';
}

} // namespace

QString WithPictureNames(QStringView text, const PictureNameOf &pictureNameOf)
{
    QString result;
    qsizetype done = 0;
    for (qsizetype at = text.indexOf(u'<'); at >= 0; at = text.indexOf(u'<', at)) {
        const qsizetype end = text.indexOf(u'>', at);
        if (end < 0)
            break;
        const QString reference = ReferenceOf(text.sliced(at + 1, end - at - 1), pictureNameOf);
        if (!reference.isEmpty()) {
            result += text.sliced(done, at - done) + reference;
            done = end + 1;
        }
        // The next tag may begin before this ">", if "<" is only text; but no ">" is looked for twice.
        const qsizetype next = text.sliced(at + 1, end - at - 1).lastIndexOf(u'<');
        at = reference.isEmpty() && next >= 0 ? at + 1 + next : end + 1;
    }
    return done == 0 ? text.toString() : result + text.sliced(done);
}

QString TextOfHtml(QStringView html, const PictureNameOf &pictureNameOf)
{
    // Without these bounds, every unterminated "<" or "[sound:" would search to the end of the text: quadratic time.
    const qsizetype lastTagEnd = html.lastIndexOf(u'>');
    const qsizetype lastBracket = html.lastIndexOf(u']');
    QString text;
    for (qsizetype at = 0; at < html.size();) {
        const QChar character = html[at];
        const QStringView rest = html.sliced(at + 1);
        if (character == u'<' && at < lastTagEnd) {
            const QStringView name = TagName(rest.first(qMin(rest.size(), LongestTagName)));
            if (!name.isEmpty() || rest.startsWith(u"!--")) {
                if (BreaksLine(name))
                    text += u' ';
                const qsizetype end = rest.indexOf(u'>');
                text += ReferenceOf(rest.first(end), pictureNameOf);
                at += end + 2;
                continue;
            }
        } else if (character == u'&') {
            const qsizetype end = rest.first(qMin(rest.size(), LongestEntity)).indexOf(u';');
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
