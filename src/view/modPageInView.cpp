#include "view/modPageInView.h"

#include <algorithm>

PageInView PageAt(int topLine, int lineCount, const PageLayout &layout)
{
    PageInView page;
    page.lineCount = lineCount;
    page.pageSize = layout.LargeChange();
    // A file that just fills the page can scroll already; that is meant. Its last line can come to the top like that of
    // a longer one.
    page.canScroll = lineCount > 0 && lineCount >= layout.RowsPerPage();
    page.maximum = page.canScroll ? lineCount : 1;
    page.topLine = std::clamp(topLine, 1, page.maximum);
    page.lastLine = std::min(page.topLine + layout.RowsPerPage() - 1, lineCount);
    return page;
}
