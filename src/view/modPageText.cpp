#include "view/modPageText.h"

namespace {

/// Appends a line up to the answer of a blank, or all of it for blank 0.
void AppendLine(const DisplayText &text, const StudyRound &round, int line, int upToBlank, QString *spoken)
{
    const QStringView view = text.Line(line);
    const BlankTable &blanks = text.Blanks();
    const int last = blanks.LastOnLines(line, line);
    qsizetype done = 0;
    for (int blank = blanks.FirstOnLines(line, line); blank > 0 && blank <= last; ++blank) {
        const qsizetype answerAt = blanks.startColumn[size_t(blank) - 1]; // behind the blank that was its bracket
        *spoken += view.sliced(done, answerAt - done);
        if (blank == upToBlank)
            return;
        const QStringView answer = text.Answer(blank);
        *spoken += round.bolOpen(blank) ? answer : HiddenAnswerText;
        done = answerAt + answer.size();
    }
    *spoken += view.sliced(done);
}

} // namespace

QString SpokenLine(const DisplayText &text, const StudyRound &round, int line)
{
    QString spoken;
    AppendLine(text, round, line, 0, &spoken);
    return spoken;
}

QString SpokenPage(const DisplayText &text, const StudyRound &round, int topLine, int rows)
{
    QString spoken;
    const int last = qMin(topLine + rows - 1, text.LineCount());
    for (int line = topLine; line <= last; ++line) {
        if (line > topLine)
            spoken += u'\n';
        AppendLine(text, round, line, 0, &spoken);
    }
    return spoken;
}

int SpokenOffset(const DisplayText &text, const StudyRound &round, int topLine, int blank)
{
    QString before;
    const int line = text.Blanks().line[size_t(blank) - 1];
    for (int above = topLine; above < line; ++above) {
        AppendLine(text, round, above, 0, &before);
        before += u'\n';
    }
    AppendLine(text, round, line, blank, &before);
    return int(before.size());
}
