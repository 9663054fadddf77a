// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "support/Rows.h"
#include "support/TestFiles.h"
#include "write/modPen.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A line with a range of it between "{" and "}", or with a cursor "{}".
struct MarkedLine
{
    explicit MarkedLine(const QString &marked)
        : line(QString(marked).remove(u'{').remove(u'}')),
          range{marked.indexOf(u'{'), marked.indexOf(u'}') - marked.indexOf(u'{') - 1}
    {
    }

    QString line;
    LineRange range;
};

} // namespace

TEST(Pen, Stroke_TogglesOrMergesBlanks)
{
    const Rows<const char *, QString, QString> rows = {
        {"a word", u"源{頼朝}が"_s, u"源[頼朝]が"_s},
        {"a whole line", u"{abc}"_s, u"[abc]"_s},
        {"spaces at the ends are left out", u"a{ bc　}d"_s, u"a [bc]　d"_s},
        {"nothing but spaces", u"a{ 　}b"_s, u"a 　b"_s},
        {"nothing", u"a{}b"_s, u"ab"_s},
        {"an answer", u"a[{bc}]d"_s, u"abcd"_s},
        {"an answer with its brackets", u"a{[bc]}d"_s, u"abcd"_s},
        {"part of an answer", u"a[b{c}d]e"_s, u"abcde"_s},
        {"cursor between brackets", u"a[b{}]c"_s, u"abc"_s},
        {"cursor in an empty blank", u"a[{}]c"_s, u"ac"_s},
        {"cursor before a blank", u"a{}[b]c"_s, u"a[b]c"_s},
        {"cursor behind a blank", u"a[b]{}c"_s, u"a[b]c"_s},
        {"out of a blank to the right", u"a[b{c]d}e"_s, u"a[bcd]e"_s},
        {"out of a blank to the left", u"{a[b}c]e"_s, u"[abc]e"_s},
        {"around a blank", u"x{a[b]c}y"_s, u"x[abc]y"_s},
        {"from blank to blank", u"[a{b] [c}d] [e]"_s, u"[ab cd] [e]"_s},
        {"beside a blank", u"{ab}[cd]"_s, u"[ab][cd]"_s},
        {"its bracket only", u"{ab[}cd]"_s, u"[abcd]"_s},
        {"over a stray bracket", u"a{b]c}d"_s, u"a[bc]d"_s},
        {"only brackets without a word", u"a{[][]}b"_s, u"a[][]b"_s},
        {"nested brackets: the inner blank goes", u"a[b[{c}]d]"_s, u"a[bcd]"_s},
    };
    for (const auto &[name, marked, expected] : rows) {
        const MarkedLine at(marked);
        EXPECT_EQ(WithEdits(at.line, Stroke(at.line, at.range)), expected) << name;
    }
}

TEST(Pen, WordAtCursor_IsWhatADoubleClickTakes)
{
    const Rows<const char *, QString, QString> rows = {
        {"in a word", u"the wo{}rd"_s, u"word"_s},
        {"before it", u"the {}word"_s, u"word"_s},
        {"behind the last", u"the word{}"_s, u"word"_s},
        {"where two scripts meet, the second", u"東京{}タワー"_s, u"タワー"_s},
        {"behind one, before a stop", u"東京{}。"_s, u"東京"_s},
        {"nowhere", u"。{} 、"_s, u""_s},
        {"empty line", u"{}"_s, u""_s},
    };
    for (const auto &[name, marked, expected] : rows) {
        const MarkedLine at(marked);
        const LineRange word = WordAtCursor(at.line, at.range.start);
        EXPECT_EQ(at.line.sliced(word.start, word.length), expected) << name;
    }
}

TEST(Pen, TypedBrackets_ComeInPairs)
{
    const Rows<const char *, QString, QString, QString> rows = {
        {"opening", u"a{}b"_s, u"["_s, u"a[{}]b"_s},
        {"opening, full-width", u"{}"_s, u"［"_s, u"[{}]"_s},
        {"opening whose partner is there", u"{}word] a"_s, u"["_s, u"[{}word] a"_s},
        {"opening before a blank", u"{} [a]"_s, u"["_s, u"[{}] [a]"_s},
        {"closing over the added one", u"[a{}]b"_s, u"]"_s, u"[a]{}b"_s},
        {"closing over the added one, full-width", u"[{}]"_s, u"］"_s, u"[]{}"_s},
        {"closing elsewhere in a blank", u"[a{}b]"_s, u"]"_s, u"[a]{}b]"_s},
        {"closing before a stray one", u"a{}]"_s, u"]"_s, u"a]{}]"_s},
        {"a committed pair", u"{}"_s, u"［東京］"_s, u"[東京]{}"_s},
        {"anything else", u"a{}"_s, u"「"_s, u"a「{}"_s},
    };
    for (const auto &[name, marked, typed, expected] : rows) {
        const MarkedLine at(marked);
        const TypedBracket result = TypeIntoLine(at.line, at.range.start, typed);
        const QString line = QString(at.line).insert(at.range.start, result.inserted);
        EXPECT_EQ(QString(line).insert(result.cursor, u"{}"_s), expected) << name;
    }
}
