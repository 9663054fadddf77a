#include "view/modPageText.h"

namespace {

/// Appends a line up to, not including, a 0-based character of it; of an answer, that can only be its first one.
void AppendLine(const DisplayText &text, const StudyRound &round, int line, qsizetype end, QString *spoken)
{
    const QStringView view = text.Line(line);
    qsizetype done = 0;
    for (const int blank : text.BlanksOnLine(line)) {
        const qsizetype answerAt = text.Blanks().StartColumnOf(blank); // behind the blank that was its bracket
        if (answerAt >= end)
            break;
        *spoken += view.sliced(done, answerAt - done);
        const QStringView answer = text.Answer(blank);
        *spoken += round.bolOpen(blank) ? answer : HiddenAnswerText;
        done = answerAt + answer.size();
    }
    *spoken += view.sliced(done, end - done);
}

} // namespace

QString SpokenPage(const DisplayText &text, const StudyRound &round, const PageInView &page)
{
    QString spoken;
    for (int line = page.topLine; line <= page.lastLine; ++line) {
        if (line > page.topLine)
            spoken += u'\n';
        AppendLine(text, round, line, text.Line(line).size(), &spoken);
    }
    return spoken;
}

int SpokenOffset(const DisplayText &text, const StudyRound &round, int topLine, int line, qsizetype index)
{
    QString before;
    for (int above = topLine; above < line; ++above) {
        AppendLine(text, round, above, text.Line(above).size(), &before);
        before += u'\n';
    }
    AppendLine(text, round, line, index, &before);
    return int(before.size());
}
