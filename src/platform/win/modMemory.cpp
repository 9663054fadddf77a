#include "platform/modMemory.h"

// Large pages need a privilege there that a learner's account does not have.
void PreferLargePages(void *, qsizetype) {}
