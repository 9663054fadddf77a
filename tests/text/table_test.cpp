#include "support/Rows.h"
#include "support/TestFiles.h"
#include "text/modHtmlText.h"
#include "text/modTable.h"
#include "text/modTableFormat.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A table as one text: cells with "|" between them, rows with "/" between them.
QString Joined(const Table &table)
{
    QStringList rows;
    for (int row = 1; row <= table.RowCount(); ++row) {
        QStringList cells;
        for (int column = 1; column <= table.CellCount(row); ++column)
            cells += table.Cell(row, column).toString();
        rows += cells.join(u'|');
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

TEST(ReadTable, TakesRowsApartAsRfc4180AndPeoplesProgramsHaveThem)
{
    const Rows<const char *, QString, QString> rows = {
        {"line ends of all kinds, none at the end", u"a,b\r\nc,d\ne,f\rg,h"_s, u"a|b/c|d/e|f/g|h"_s},
        {"line end at the end", u"a,b\n"_s, u"a|b"_s},
        {"blank lines, also of blanks", u"\n\r\na,b\n\n  \t\nc,d\n\n"_s, u"a|b/c|d"_s},
        {"empty cells", u",a,\n,,\n"_s, u"|a|/||"_s},
        {"quoted separators and line ends", u"\"a,1\",\"b\r\n2\"\nc,d"_s, u"a,1|b\r\n2/c|d"_s},
        {"doubled quotes", u"\"\"\"a\"\"\",\"\"\n\"\"\"\",b"_s, u"\"a\"|/\"|b"_s},
        {"quotes within a cell", u"5\" disk,say \"hi\"\n"_s, u"5\" disk|say \"hi\""_s},
        {"cell that begins with a quoted word", u"\"Hi\" he said\tb\nc\td"_s, u"\"Hi\" he said|b/c|d"_s},
        {"blanks behind a quoted cell", u"\"a\"  ,\"b\" \nc,d"_s, u"a|b/c|d"_s},
        {"blanks of cells stay", u" a , b\n"_s, u" a | b"_s},
        {"uneven rows", u"a,b\nc\nd,e,f\n"_s, u"a|b/c/d|e|f"_s},
        {"no row", u"\r\n\n"_s, QString()},
        {"quoted row of nothing", u"a\n\"\"\nb"_s, u"a//b"_s},
        {"quote never closed between tabs", u"a\tb\n\"c\td\ne\t\"f"_s, u"a|b/\"c|d/e|\"f"_s},
        {"closed only by the quote of a later row", u"a\t\"b\r\nc\td\"\r\ne\tf"_s, u"a|\"b/c|d\"/e|f"_s},
        {"line end in a cell between tabs", u"a\t\"b\nc\"\n\"d\ne\"\tf\n"_s, u"a|b\nc/d\ne|f"_s},
        {"line end and tab in a cell", u"a\tb\tc\n\"d\te\nf\"\tg\th"_s, u"a|b|c/d\te\nf|g|h"_s},
    };
    for (const auto &[name, text, expected] : rows)
        EXPECT_EQ(Joined(TableOf(text)), expected) << name;
}

TEST(ReadTable, CellsThatAreWrittenWithQuotesComeBack)
{
    const QStringList cells = {QString(), u"a"_s,          u"\""_s,     u"\"\"x"_s,    u"a,b"_s,
                               u"\r"_s,   u"two\nlines"_s, u"\t;,\""_s, u" りんご "_s, u"[x]"_s};
    for (const QChar separator : {u'\t', u',', u';', u'|'}) {
        QString text;
        QStringList expected;
        for (const QString &cell : cells) {
            text += WithQuotes(cell) + separator + WithQuotes(u"z"_s) + u"\r\n"_s;
            expected += cell + u"|z"_s;
        }
        Table table;
        int errorLine = 0;
        ASSERT_TRUE(ReadTable(text, TableFormat{.separator = separator}, &table, &errorLine));
        EXPECT_EQ(Joined(table), expected.join(u'/')) << int(separator.unicode());
    }
}

TEST(ReadTable, TheUsersSeparatorGoesBeforeWhatTheLinesTell)
{
    const Rows<const char *, QString, QString, QString> rows = {
        {"longer than a character", u"a-b - c\nd - \"e - f\" - g\n"_s, u" - "_s, u"a-b|c/d|e - f|g"_s},
        {"cut off by the end of the line", u"a -\nb - c -"_s, u" - "_s, u"a -/b|c -"_s},
        {"behind a header", u"sep=;\na;b,c\n"_s, u","_s, u"a;b|c"_s},
        {"quote never closed", u"\"a - b\nc - d\n"_s, u" - "_s, u"\"a|b/c|d"_s},
        {"nowhere in the text", u"a,b\nc,d"_s, u"::"_s, u"a,b/c,d"_s},
    };
    for (const auto &[name, text, separator, expected] : rows) {
        Table table;
        int errorLine = 0;
        ASSERT_TRUE(ReadTable(text, DetectTableFormat(text, separator), &table, &errorLine)) << name;
        EXPECT_EQ(Joined(table), expected) << name;
    }
}

TEST(ReadTable, QuoteNeverClosed_IsRefusedWithItsLine)
{
    const Rows<const char *, QString, int> rows = {
        {"to the end", u"a,b\r\nc,\"d\r\ne,f\r\n"_s, 2},
        {"line ends in a cell before it", u"\"a\n1\",b\rc,d\n\"e"_s, 4},
        {"up to the next quoted cell", u"a,\"b\nc,\"d\"\n"_s, 1},
        {"a quote alone", u"a;b\n\""_s, 2},
    };
    for (const auto &[name, text, line] : rows) {
        Table table;
        int errorLine = 0;
        EXPECT_FALSE(ReadTable(text, DetectTableFormat(text), &table, &errorLine)) << name;
        EXPECT_EQ(errorLine, line) << name;
        EXPECT_EQ(table.RowCount(), 0) << name;
    }
}

TEST(ReadTable, RowsKeepTheNumbersOfASpreadsheet)
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

TEST(GuessSeparator, GoesByTheFirstRows)
{
    const Rows<const char *, QString, QChar> rows = {
        {"commas in the text of a tabbed file", u"a, b\tc\nd, e\tf\n"_s, u'\t'},
        {"a tab in one row only", u"a,b\nc\t,d\ne,f\n"_s, u','},
        {"commas in some rows", u"apple;fruit, red\nice;cold\n"_s, u';'},
        {"separators within quotes", u"\"a;1\",\"b;2;3\"\n\"c;\",d\n"_s, u','},
        {"more columns", u"a;b,c;d\ne;f,g;h\n"_s, u';'},
        {"a title above the rows", u"Unit 3\na,b\nc,d\n"_s, u','},
        {"quote never closed", u"a,\"b\nc,d\n"_s, u','},
        {"tabs within quotes", u"\"a\t1\",b\n\"c\t2\",d\n"_s, u','},
        {"commas within quotes", u"\"a,1\";b\n\"c,2\";d\n"_s, u';'},
        {"a speaker's commas in a tabbed file", u"\"a, b\"\tc\n\"d, e\"\tf\n"_s, u'\t'},
        {"a speaker's tab", u"\"a\", b\tc\n"_s, u'\t'},
        {"one column", u"apple\nice\n"_s, u'\t'},
        {"nothing", QString(), u'\t'},
    };
    for (const auto &[name, text, separator] : rows)
        EXPECT_EQ(GuessSeparator(text), separator) << name;
}

TEST(DetectTableFormat, HeaderLinesOfOtherProgramsAreTakenAndNoRow)
{
    const Rows<const char *, QString, QString> rows = {
        {"spreadsheet", u"sep=;\r\na,1;b\r\n"_s, u"a,1|b"_s},
        {"only on the first line", u"a;b\nc;d\nsep=,\n"_s, u"a|b/c|d/sep=,"_s},
        {"flash cards", u"#separator:tab\n#html:false\n#tags:x\na,b\tc\n"_s, u"a,b|c"_s},
        {"named and literal separators", u"#separator:Pipe\na|b"_s, u"a|b"_s},
        {"a literal separator", u"#separator:!\na!b"_s, u"a|b"_s},
        {"a separator that cannot be one", u"#separator:\"\na;b\nc;d"_s, u"a|b/c|d"_s},
        {"columns that are not to learn",
         u"#separator:Comma\n#guid column:1\n#notetype column:2\n#tags column:5\nid1,Basic,a,b,t1\nid2,Basic,c,d,"_s,
         u"a|b/c|d"_s},
        {"no column left", u"#separator:Comma\n#guid column:1\nid1\nid2,a\n"_s, u"a"_s},
        {"a row that begins with #", u"#,word\n1,apple\n#no header: x,y\n"_s, u"#|word/1|apple/#no header: x|y"_s},
        {"HTML", u"#separator:comma\n#html:true\n\"a<br>b\",<b>c</b>&amp;&#x41;\n"_s, u"a b|c&A"_s},
        {"nothing behind the header", u"#html:true"_s, QString()},
    };
    for (const auto &[name, text, expected] : rows)
        EXPECT_EQ(Joined(TableOf(text)), expected) << name;
}

TEST(TextOfHtml, DropsTagsAndNothingElse)
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
