#include "view/modSpots.h"

#include "text/modPictureName.h"
#include "view/modWordAt.h"

#include <algorithm>

namespace {

std::vector<Place> SpotsOnLine(const DisplayText &text, int line, bool withWords)
{
    std::vector<Place> spots;
    const int last = text.Blanks().LastOnLines(line, line);
    for (int blank = text.Blanks().FirstOnLines(line, line); blank > 0 && blank <= last; ++blank)
        spots.push_back({line, text.Blanks().startColumn[size_t(blank) - 1], int(text.Answer(blank).size()) + 2});
    const QString masked = text.MaskedLine(line);
    for (const PictureReference &reference : PictureReferences(masked))
        spots.push_back({line, int(reference.start) + 1, int(reference.length)});
    if (withWords)
        for (const Word &word : WordsOf(masked))
            spots.push_back({line, int(word.start) + 1, int(word.length)});
    std::sort(spots.begin(), spots.end(),
              [](const Place &first, const Place &second) { return first.column < second.column; });
    return spots;
}

} // namespace

std::vector<Place> SpotsInView(const DisplayText &text, const PageInView &page, bool withWords)
{
    std::vector<Place> spots;
    const int lastLine = qMin(page.topLine + page.rows - 1, text.LineCount());
    for (int line = page.topLine; line <= lastLine; ++line) {
        const std::vector<Place> onLine = SpotsOnLine(text, line, withWords);
        spots.insert(spots.end(), onLine.begin(), onLine.end());
    }
    return spots;
}
