// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modHtmlText.h"
#include "exchange/modTable.h"
#include "exchange/modTableFormat.h"
#include "support/Rows.h"
#include "support/TestFiles.h"

#include <QDeadlineTimer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A table as one text: cells joined by a character, rows by "/".
QString Joined(const Table &table, QChar between = u'|')
{
    QStringList rows;
    for (int row = 1; row <= table.RowCount(); ++row) {
        QStringList cells;
        for (int column = 1; column <= table.CellCount(row); ++column)
            cells += table.Cell(row, column).toString();
        rows += cells.join(between);
    }
    return rows.join(u'/');
}

Table TableOf(const QString &text)
{
    Table table;
    int errorLine = 0;
    EXPECT_TRUE(ReadTable(text, DetectTableFormat(text), &table, &errorLine)) << errorLine;
    return table;
}

QString WithQuotes(QString cell)
{
    return u'"' + cell.replace(u'"', u"\"\""_s) + u'"';
}

} // namespace

TEST(ReadTable, StandardOrDeviatingText_SplitsIntoRowsAndCells)
{
    const Rows<const char *, QString, QString> rows = {
        {"all kinds of line endings, none at the end", u"a,b\r\nc,d\ne,f\rg,h"_s, u"a|b/c|d/e|f/g|h"_s},
        {"line ending at the end", u"a,b\n"_s, u"a|b"_s},
        {"empty and blank lines", u"\n\r\na,b\n\n  \t\nc,d\n\n"_s, u"a|b/c|d"_s},
        {"empty cells", u",a,\n,,\n"_s, u"|a|/||"_s},
        {"quoted separators and line endings", u"\"a,1\",\"b\r\n2\"\nc,d"_s, u"a,1|b\r\n2/c|d"_s},
        {"doubled quotes", u"\"\"\"a\"\"\",\"\"\n\"\"\"\",b"_s, u"\"a\"|/\"|b"_s},
        {"quotes within a cell", u"5\" disk,say \"hi\"\n"_s, u"5\" disk|say \"hi\""_s},
        {"cell beginning with a quoted word", u"\"Hi\" he said\tb\nc\td"_s, u"\"Hi\" he said|b/c|d"_s},
        {"blanks after a quoted cell", u"\"a\"  ,\"b\" \nc,d"_s, u"a|b/c|d"_s},
        {"blanks within cells are kept", u" a , b\n"_s, u" a | b"_s},
        {"uneven rows", u"a,b\nc\nd,e,f\n"_s, u"a|b/c/d|e|f"_s},
        {"no rows", u"\r\n\n"_s, QString()},
        {"row of an empty quoted cell", u"a\n\"\"\nb"_s, u"a//b"_s},
        {"unterminated quote between tabs", u"a\tb\n\"c\td\ne\t\"f"_s, u"a|b/\"c|d/e|\"f"_s},
        {"quote closed only by one in a later row", u"a\t\"b\r\nc\td\"\r\ne\tf"_s, u"a|\"b/c|d\"/e|f"_s},
        {"line ending in a cell between tabs", u"a\t\"b\nc\"\n\"d\ne\"\tf\n"_s, u"a|b\nc/d\ne|f"_s},
        {"line ending and tab in a cell", u"a\tb\tc\n\"d\te\nf\"\tg\th"_s, u"a|b|c/d\te\nf|g|h"_s},
        {"line ending in the first row", u"a\t\"b\nc\"\td\ne\tf\tg"_s, u"a|b\nc|d/e|f|g"_s},
        {"line ending in every row", u"a\t\"b\nc\"\td\ne\t\"f\ng\"\th"_s, u"a|b\nc|d/e|f\ng|h"_s},
        {"speech over two rows", u"\"a\tb\r\nc\"\td\r\ne\tf"_s, u"\"a|b/c\"|d/e|f"_s},
        {"speech over three rows", u"a\tb\n\"c\td\ne\tf\ng\"\th"_s, u"a|b/\"c|d/e|f/g\"|h"_s},
    };
    for (const auto &[name, text, expected] : rows)
        EXPECT_EQ(Joined(TableOf(text)), expected) << name;
}

// What a program quotes depends on the separator and on its settings; it always quotes a quote and a line end.
TEST(ReadTable, TableOfOtherProgram_HasItsCells)
{
    const QList<QStringList> cells = {{u"word"_s, u"mean\ning"_s, u"ex"_s},  {u"5\" disk"_s, u"say \"hi\""_s, u"\""_s},
                                      {u"a,b"_s, u"c\td"_s, QString()},      {QString(), u"x;y"_s, u"d\te\nf"_s},
                                      {u" \"g\" "_s, u"'h"_s, u"i\"\n\""_s}, {u"\r"_s, u" りんご "_s, u"\"\"x"_s}};
    const Rows<const char *, QChar, QString, QString> rows = {
        {"comma, as few quotes as possible", u',', u","_s, u"\r\n"_s},
        {"comma, all quoted, line ends of LF", u',', QString(), u"\n"_s},
        {"tab, as few quotes as possible", u'\t', u"\t"_s, u"\r\n"_s},
        {"tab, commas quoted as in Excel", u'\t', u"\t,"_s, u"\r\n"_s},
        {"tab, all quoted", u'\t', QString(), u"\r\n"_s},
        {"semicolon, as few quotes as possible", u';', u";"_s, u"\r\n"_s},
        {"pipe, as few quotes as possible", u'|', u"|"_s, u"\r\n"_s},
        {"pipe, all quoted", u'|', QString(), u"\r\n"_s},
    };
    for (const auto &[name, separator, quotedForThese, lineEnd] : rows) {
        QString text;
        QStringList expected;
        for (const QStringList &row : cells) {
            QStringList written;
            for (const QString &cell : row) {
                const QString special = quotedForThese + u"\"\r\n"_s;
                const auto needsQuotes = [&special](QChar character) { return special.contains(character); };
                const bool isQuoted = quotedForThese.isEmpty() || std::ranges::any_of(cell, needsQuotes);
                written += isQuoted ? WithQuotes(cell) : cell;
            }
            text += written.join(separator) + lineEnd;
            expected += row.join(u'^');
        }
        Table table;
        int errorLine = 0;
        ASSERT_TRUE(ReadTable(text, TableFormat{.separator = separator}, &table, &errorLine)) << name;
        EXPECT_EQ(Joined(table, u'^'), expected.join(u'/')) << name;
        EXPECT_TRUE(separator == u'|' || GuessSeparator(text) == QString(separator)) << name;
    }
}

TEST(GuardedCell, WhatASpreadsheetCouldRun_GetsApostropheThatReaderTakesOff)
{
    const Rows<QString, QString> rows = {
        {u"=1+1"_s, u"'=1+1"_s},       {u"="_s, u"'="_s},
        {u"+f(x)"_s, u"'+f(x)"_s},     {u"-1|x"_s, u"'-1|x"_s},
        {u"@a!b"_s, u"'@a!b"_s},       {u"\t(x"_s, u"'\t(x"_s},
        {u"\rcmd|x"_s, u"'\rcmd|x"_s}, {u"'=1"_s, u"''=1"_s},
        {u"''+f(x)"_s, u"'''+f(x)"_s}, {QString(), QString()},
        {u"+81"_s, u"+81"_s},          {u"-2, -3"_s, u"-2, -3"_s},
        {u"@user"_s, u"@user"_s},      {u"\tx"_s, u"\tx"_s},
        {u"'tis"_s, u"'tis"_s},        {u"'"_s, u"'"_s},
        {u"'-1"_s, u"'-1"_s},          {u"f(x)=1"_s, u"f(x)=1"_s},
        {u" =1"_s, u" =1"_s},          {u"＝1"_s, u"＝1"_s},
    };
    QString text;
    for (const auto &[cell, guarded] : rows) {
        EXPECT_EQ(GuardedCell(cell), guarded) << cell.toStdString();
        text += WithQuotes(GuardedCell(cell)) + u",z\r\n"_s;
    }
    const Table table = TableOf(text);
    ASSERT_EQ(table.RowCount(), int(rows.size()));
    for (int row = 1; row <= table.RowCount(); ++row)
        EXPECT_EQ(table.Cell(row, 1), std::get<0>(rows[size_t(row) - 1]));
    EXPECT_EQ(Joined(TableOf(u"''\t'=1\n'=2\t'3\n"_s)), u"''|=1/=2|'3"_s) << "in any table";
}

TEST(ReadTable, GivenSeparator_OverridesHeaderAndGuess)
{
    const Rows<const char *, QString, QString, QString> rows = {
        {"longer than one character", u"a-b - c\nd - \"e - f\" - g\n"_s, u" - "_s, u"a-b|c/d|e - f|g"_s},
        {"cut off by the line ending", u"a -\nb - c -"_s, u" - "_s, u"a -/b|c -"_s},
        {"after a header", u"sep=;\na;b,c\n"_s, u","_s, u"a;b|c"_s},
        {"unterminated quote", u"\"a - b\nc - d\n"_s, u" - "_s, u"\"a|b/c|d"_s},
        {"not in the text", u"a,b\nc,d"_s, u"::"_s, u"a,b/c,d"_s},
    };
    for (const auto &[name, text, separator, expected] : rows) {
        Table table;
        int errorLine = 0;
        ASSERT_TRUE(ReadTable(text, DetectTableFormat(text, separator), &table, &errorLine)) << name;
        EXPECT_EQ(Joined(table), expected) << name;
    }
}

TEST(ReadTable, UnterminatedQuote_IsRefusedWithItsLine)
{
    const Rows<const char *, QString, int> rows = {
        {"up to the end of the text", u"a,b\r\nc,\"d\r\ne,f\r\n"_s, 2},
        {"after a cell with line endings", u"\"a\n1\",b\rc,d\n\"e"_s, 4},
        {"up to the next quoted cell", u"a,\"b\nc,\"d\"\n"_s, 1},
        {"a lone quote", u"a;b\n\""_s, 2},
    };
    for (const auto &[name, text, line] : rows) {
        Table table;
        int errorLine = 0;
        EXPECT_FALSE(ReadTable(text, DetectTableFormat(text), &table, &errorLine)) << name;
        EXPECT_EQ(errorLine, line) << name;
        EXPECT_EQ(table.RowCount(), 0) << name;
    }
}

TEST(ReadTable, SkippedRows_CountInSpreadsheetNumbers)
{
    const Table table = TableOf(u"sep=;\r\n\r\n\"a\r\n1\";b\r\n\r\nc;d;e\r\nf"_s);
    EXPECT_EQ(Joined(table), u"a\r\n1|b/c|d|e/f"_s);
    EXPECT_EQ(table.NumberOf(1), 3);
    EXPECT_EQ(table.NumberOf(2), 5);
    EXPECT_EQ(table.NumberOf(3), 6);
    EXPECT_EQ(table.ColumnCount(), 3);
    EXPECT_EQ(table.UnevenRows(), 2);
    EXPECT_TRUE(table.Cell(3, 2).isEmpty());
}

TEST(GuessSeparator, FirstRows_DecideSeparator)
{
    const Rows<const char *, QString, QString> rows = {
        {"commas in the text of a tabbed file", u"a, b\tc\nd, e\tf\n"_s, u"\t"_s},
        {"a tab in one row only", u"a,b\nc\t,d\ne,f\n"_s, u","_s},
        {"commas in some rows", u"apple;fruit, red\nice;cold\n"_s, u";"_s},
        {"separators within quotes", u"\"a;1\",\"b;2;3\"\n\"c;\",d\n"_s, u","_s},
        {"more columns", u"a;b,c;d\ne;f,g;h\n"_s, u";"_s},
        {"a title above the rows", u"Unit 3\na,b\nc,d\n"_s, u","_s},
        {"unterminated quote", u"a,\"b\nc,d\n"_s, u","_s},
        {"tabs within quotes", u"\"a\t1\",b\n\"c\t2\",d\n"_s, u","_s},
        {"commas within quotes", u"\"a,1\";b\n\"c,2\";d\n"_s, u";"_s},
        {"commas in quoted speech in a tabbed file", u"\"a, b\"\tc\n\"d, e\"\tf\n"_s, u"\t"_s},
        {"tab after quoted speech", u"\"a\", b\tc\n"_s, u"\t"_s},
        {"one column", u"apple\nice\n"_s, u"\t"_s},
        {"hyphens between spaces", u"apple - りんご\nice-cream - 氷\n"_s, u" - "_s},
        {"em dashes", u"apple \u2014 りんご\nice \u2014 氷, 菓子\n"_s, u" \u2014 "_s},
        {"en dashes", u"apple \u2013 りんご\nice \u2013 氷\n"_s, u" \u2013 "_s},
        {"hyphens, and commas in each meaning", u"apple - red, round\nice - cold, hard\n"_s, u" - "_s},
        {"hyphens in the cells of a table", u"1912 - 1926,大正\n1926 - 1989,昭和\n"_s, u","_s},
        {"hyphens within quotes", u"\"a - b\",c\n\"d - e\",f\n"_s, u","_s},
        {"hyphens without spaces", u"ice-cream\nwell-known\n"_s, u"\t"_s},
        {"empty text", QString(), u"\t"_s},
    };
    for (const auto &[name, text, separator] : rows)
        EXPECT_EQ(GuessSeparator(text), separator) << name;
}

TEST(DetectTableFormat, HeaderLines_SetFormatAndAreNotRows)
{
    const Rows<const char *, QString, QString> rows = {
        {"spreadsheet", u"sep=;\r\na,1;b\r\n"_s, u"a,1|b"_s},
        {"sep= only counts on the first line", u"a;b\nc;d\nsep=,\n"_s, u"a|b/c|d/sep=,"_s},
        {"flash cards", u"#separator:tab\n#html:false\n#tags:x\na,b\tc\n"_s, u"a,b|c"_s},
        {"named and literal separators", u"#separator:Pipe\na|b"_s, u"a|b"_s},
        {"a literal separator", u"#separator:!\na!b"_s, u"a|b"_s},
        {"an impossible separator", u"#separator:\"\na;b\nc;d"_s, u"a|b/c|d"_s},
        {"columns without text to learn",
         u"#separator:Comma\n#guid column:1\n#notetype column:2\n#tags column:5\nid1,Basic,a,b,t1\nid2,Basic,c,d,"_s,
         u"a|b/c|d"_s},
        {"row without remaining columns", u"#separator:Comma\n#guid column:1\nid1\nid2,a\n"_s, u"a"_s},
        {"a row beginning with #", u"#,word\n1,apple\n#no header: x,y\n"_s, u"#|word/1|apple/#no header: x|y"_s},
        {"HTML", u"#separator:comma\n#html:true\n\"a<br>b\",<b>c</b>&amp;&#x41;\n"_s, u"a b|c&A"_s},
        {"cells as they are", u"#separator:comma\n'=a,''+(b"_s, u"'=a|''+(b"_s},
        {"nothing after the header", u"#html:true"_s, QString()},
    };
    for (const auto &[name, text, expected] : rows)
        EXPECT_EQ(Joined(TableOf(text)), expected) << name;
}

TEST(DetectTableFormat, ManyColumnsToSkip_TakeLinearTime)
{
    QString text;
    for (int column = 3; column < 100'000; ++column)
        text += u"#tags column:"_s + QString::number(column) + u'\n';
    const qsizetype rows = 100'000;
    text += u"a\tb\n"_s.repeated(rows); // with a search through the columns for each cell, this took minutes
    Table table;
    int errorLine = 0;
    EXPECT_TRUE(ReadTable(text, DetectTableFormat(text), &table, &errorLine));
    EXPECT_EQ(table.RowCount(), rows);
    EXPECT_EQ(table.ColumnCount(), 2);
}

TEST(TextOfHtml, TagsAndEntities_AreConvertedAndOtherTextIsKept)
{
    const Rows<QString, QString> rows = {
        {u"<div>a</div><DIV class=\"x\">b</div>c<br/>d"_s, u" a  b c d"_s},
        {u"<i>a</i><img src=\"x.png\">b<!-- c -->"_s, u"ab"_s},
        {u"1 < 2 > 0 <3> a<"_s, u"1 < 2 > 0 <3> a<"_s},
        {u"<b>never closed <i"_s, u"never closed <i"_s},
        {u"&lt;b&gt;&quot;&apos;&nbsp;&#12354;&#x1F600;"_s, u"<b>\"'\u00A0あ\U0001F600"_s},
        {u"&unknown; & &amp &#0; &#xD800; &#x110000; &#10;"_s, u"&unknown; & &amp &#0; &#xD800; &#x110000; &#10;"_s},
        {u"a[sound:a.mp3]b[c][sound:"_s, u"ab[c][sound:"_s},
        {u"a\r\nb"_s, u"a  b"_s},
    };
    for (const auto &[html, text] : rows)
        EXPECT_EQ(TextOfHtml(html), text);
}

TEST(PictureNames, TagOfPictureBesideTable_BecomesReference)
{
    const auto nameOf = [](const QString &file) { return file == u"a b&.png" ? u"図"_s : QString(); };
    const Rows<const char *, QString, QString, QString> rows = {
        {"double quotes", u"x<img src=\"a b&amp;.png\">y"_s, u"x｢図｣y"_s, u"x｢図｣y"_s},
        {"other attributes", u"<IMG alt='>'src='a b&.png' class=c />"_s, u"'src='a b&.png' class=c />"_s,
         u"<IMG alt='>'src='a b&.png' class=c />"_s},
        {"attributes before and after", u"<IMG alt='x' hidden src = 'a b&.png' class=c />"_s, u"｢図｣"_s, u"｢図｣"_s},
        {"percent signs, no quotes", u"<img src=a%20b%26.png>"_s, u"｢図｣"_s, u"｢図｣"_s},
        {"in a folder", u"<img src=\"media/a b&.png\">"_s, QString(), u"<img src=\"media/a b&.png\">"_s},
        {"elsewhere", u"<img src=\"http://x/a b&.png\">"_s, QString(), u"<img src=\"http://x/a b&.png\">"_s},
        {"above", u"<img src=\"..%5Ca b&.png\">"_s, QString(), u"<img src=\"..%5Ca b&.png\">"_s},
        {"not there", u"<img src=b.png>"_s, QString(), u"<img src=b.png>"_s},
        {"another tag", u"<b src='a b&.png'>1 < 2 <img src='a b&.png'>"_s, u"1 < 2 ｢図｣"_s,
         u"<b src='a b&.png'>1 < 2 ｢図｣"_s},
        {"never closed", u"<img src='a b&.png'"_s, u"<img src='a b&.png'"_s, u"<img src='a b&.png'"_s},
        {"no value", u"<img src><img src=><img =><img>"_s, QString(), u"<img src><img src=><img =><img>"_s},
    };
    for (const auto &[name, text, ofHtml, ofText] : rows) {
        EXPECT_EQ(TextOfHtml(text, nameOf), ofHtml) << name;
        EXPECT_EQ(WithPictureNames(text, nameOf), ofText) << name;
    }
}

TEST(TableReader, Slices_GiveTheRowsOfAWholeReading)
{
    QString text;
    for (int row = 0; row < 500; ++row)
        text += u"%1,\"b\nb\",%2\n"_s.arg(row).arg(row % 7 == 0 ? u"c,d"_s : u"c"_s);
    TableReader reader(text, TableFormat{.separator = u","_s});
    EXPECT_FALSE(reader.GoOn(QDeadlineTimer(QDeadlineTimer::Forever), 20));
    EXPECT_EQ(reader.Rows().RowCount(), 20);
    EXPECT_TRUE(reader.Done() > 0 && reader.Done() < 1);
    while (reader.GoOn(QDeadlineTimer(0)))
        EXPECT_EQ(reader.Rows().CellCount(reader.Rows().RowCount()), (reader.Rows().RowCount() - 1) % 7 == 0 ? 4 : 3)
            << "the row that is being read adds nothing to the one before";
    EXPECT_EQ(Joined(reader.Take()), Joined(TableOf(text)));
}
