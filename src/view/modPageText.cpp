#include "view/modPageText.h"

namespace {

/// Appends a line up to, not including, a 0-based character of it; of an answer, that can only be its first one.
void AppendLine(const DisplayText &text, const StudyRound &round, int line, qsizetype end, QString *spoken)
{
    const QStringView view = text.Line(line);
    const BlankTable &blanks = text.Blanks();
    const int last = blanks.LastOnLines(line, line);
    qsizetype done = 0;
    for (int blank = blanks.FirstOnLines(line, line); blank > 0 && blank <= last; ++blank) {
        const qsizetype answerAt = blanks.startColumn[size_t(blank) - 1]; // behind the blank that was its bracket
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

QString SpokenPage(const DisplayText &text, const StudyRound &round, int topLine, int rows)
{
    QString spoken;
    const int last = qMin(topLine + rows - 1, text.LineCount());
    for (int line = topLine; line <= last; ++line) {
        if (line > topLine)
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
