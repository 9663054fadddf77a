#include "view/modSpots.h"

#include "text/modPictureName.h"
#include "view/modWordAt.h"

#include <algorithm>
#include <tuple>

namespace {

bool IsBefore(const Spot &first, const Spot &second)
{
    return std::tie(first.line, first.cells.start) < std::tie(second.line, second.cells.start);
}

} // namespace

std::vector<Spot> SpotsInView(const DisplayText &text, const PageInView &page, bool withWords)
{
    std::vector<Spot> spots;
    const int lastLine = qMin(page.topLine + page.rows - 1, text.LineCount());
    for (int line = page.topLine; line <= lastLine; ++line) {
        const int last = text.Blanks().LastOnLines(line, line);
        for (int blank = text.Blanks().FirstOnLines(line, line); blank > 0 && blank <= last; ++blank)
            spots.push_back({line, text.Cells(blank), text.Blanks().startColumn[size_t(blank) - 1]});
        const QString masked = text.MaskedLine(line); // a blank hides what is in it
        const auto add = [&](qsizetype start, qsizetype length, qsizetype index) {
            const int first = CellsOf(QStringView(masked).first(start));
            spots.push_back({line, {first, first + CellsOf(QStringView(masked).sliced(start, length))}, index});
        };
        for (const PictureReference &reference : PictureReferences(masked))
            add(reference.start, reference.length, reference.start + 1);
        if (withWords)
            for (const Word &word : WordsOf(masked))
                add(word.start, word.length, word.start);
    }
    std::sort(spots.begin(), spots.end(), IsBefore);
    return spots;
}

Spot NextSpot(const std::vector<Spot> &spots, const Spot &from, bool backwards)
{
    if (spots.empty())
        return Spot();
    if (backwards) {
        const auto spot = std::lower_bound(spots.begin(), spots.end(), from, IsBefore);
        return spot == spots.begin() ? spots.back() : *(spot - 1);
    }
    const auto spot = std::upper_bound(spots.begin(), spots.end(), from, IsBefore);
    return spot == spots.end() ? spots.front() : *spot;
}
