// Where a learner gets a font for the page.
#pragma once

#include <QString>

/// What to do on this system when it has no Japanese fixed-pitch font, in Japanese and, as that may not be readable
/// then, in English.
QString FontAdvice();
