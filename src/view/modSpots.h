// What can be clicked on the page, for those who use keys: the blanks, the references to pictures, and the words where
// they are read aloud.
#pragma once

#include "view/modStudyRound.h"

#include <vector>

struct Spot
{
    int line = 0;        ///< 1-based; 0 = none
    CellRange cells;     ///< from its first cell up to, not including, its end
    qsizetype index = 0; ///< 0-based character of the line with which the answer, the name or the word itself begins

    bool operator==(const Spot &) const = default;
};

/// The spots in view in reading order.
std::vector<Spot> SpotsInView(const DisplayText &text, const PageInView &page, bool withWords);

/// The spot behind a given one, or in front of it, and round at the end. From none it goes to the first or the last.
/// @param spots  in reading order
/// @return none when there are no spots
Spot NextSpot(const std::vector<Spot> &spots, const Spot &from, bool backwards);
