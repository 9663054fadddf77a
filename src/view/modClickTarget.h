// What can be clicked on the page, for those who use keys.
#pragma once

#include "search/modSearch.h"
#include "view/modStudyRound.h"

/// The places in view that can be clicked, in file order: the blanks with their brackets and the references to pictures
/// with theirs. A blank hides what is in it.
/// @param withWords  whether words can be clicked too, which is so while they are read aloud
std::vector<Place> SpotsInView(const DisplayText &text, const PageInView &page, bool withWords);
