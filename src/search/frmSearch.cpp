// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "search/frmSearch.h"

#include "base/modLog.h"
#include "search/SearchModel.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"

#include <QEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTimer>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int ShowEveryMs = 100; // counts that change faster cannot be read

} // namespace

frmSearch::frmSearch(KeywordSearch &search, std::function<SearchedPage()> page, QWidget *owner, int sliceMs)
    : QDialog(owner), m_search(search), m_page(std::move(page)), m_sliceMs(sliceMs),
      m_entries(new SearchModel(search, this)), m_counting(new QTimer(this)),
      lblHint(NamedLabel(u"lblHint"_s, search.List().fault, this)),
      lblFound(NamedLabel(u"lblFound"_s, QString(), this)), txtSearch(new QLineEdit(this)),
      lstKeyword(new QListView(this))
{
    setObjectName(u"frmSearch"_s);
    setWindowTitle(u"キーワード検索"_s);
    AddControls();
    connect(m_counting, &QTimer::timeout, this, &frmSearch::CountOn);
    connect(txtSearch, &QLineEdit::textChanged, this, &frmSearch::txtSearch_Change);
    connect(lstKeyword, &QListView::clicked, this, &frmSearch::lstKeyword_Click);
    connect(new QShortcut(Qt::Key_F3, this), &QShortcut::activated, this, [this] { GoOn(false); });
    connect(new QShortcut(Qt::SHIFT | Qt::Key_F3, this), &QShortcut::activated, this, [this] { GoOn(true); });
    LayOut();
    Refresh();
}

void frmSearch::AddControls()
{
    lblHint->setWordWrap(true);
    lblHint->setVisible(!m_search.List().fault.isEmpty());
    // Reserves its space, so that the list does not move under the pointer.
    lblFound->setMinimumSize(lblFound->fontMetrics().size(0, u"000000 / 000000　先頭に戻りました"_s));
    NameControl(txtSearch, u"txtSearch"_s, u"探す言葉"_s);
    txtSearch->setPlaceholderText(u"キーワードまたは本文の言葉"_s);
    DimPlaceholder(txtSearch);
    NameControl(lstKeyword, u"lstKeyword"_s, u"キーワード"_s);
    lstKeyword->setModel(m_entries);
    lstKeyword->setUniformItemSizes(true); // avoids measuring thousands of rows
    lstKeyword->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstKeyword->setTextElideMode(Qt::ElideMiddle); // keeps the count after a long word
    lstKeyword->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstKeyword->setMinimumHeight(4 * fontMetrics().height());
}

void frmSearch::LayOut()
{
    QPushButton *const cmdNext =
        AddButton(this, u"cmdNext"_s, u"次へ(F3)"_s, u"次の場所に進みます (Enter, F3)"_s, &frmSearch::cmdNext_Click);
    cmdNext->setDefault(true); // Enter in the list reaches it too
    QPushButton *const cmdBack = AddButton(this, u"cmdBack"_s, u"前へ(Shift+F3)"_s, u"前の場所に戻ります (Shift+F3)"_s,
                                           &frmSearch::cmdBack_Click);
    auto *const grid = new QGridLayout(this);
    grid->addWidget(txtSearch, 0, 0, 1, 2);
    grid->addWidget(lstKeyword, 1, 0, 1, 2);
    grid->addWidget(lblHint, 2, 0, 1, 2);
    grid->addWidget(lblFound, 3, 0, 1, 2);
    grid->addWidget(cmdNext, 4, 0);
    grid->addWidget(cmdBack, 4, 1);
    const QSize size(40 * fontMetrics().averageCharWidth(), 24 * fontMetrics().height());
    resize(size.expandedTo(minimumSizeHint()).boundedTo(AvailableSize(this)));
}

void frmSearch::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        DimPlaceholder(txtSearch);
}

/// Where to open the window: where it was, or beside its owner the first time, when the owner has moved to another
/// screen since the last time, and when the window's screen is gone.
QPoint frmSearch::OpeningPosition() const
{
    if (!parentWidget())
        return pos();
    const QWidget *const owner = parentWidget()->window();
    if (m_ownerScreen == owner->screen() && QGuiApplication::screenAt(geometry().center()))
        return pos();
    const QSize frame = owner->frameGeometry().size() - owner->size(); // assumed for this window too
    return PositionBeside(owner->frameGeometry(), size() + frame, owner->screen()->availableGeometry());
}

void frmSearch::Open()
{
    if (isHidden()) {
        move(OpeningPosition());
        m_ownerScreen = parentWidget() ? parentWidget()->screen() : nullptr;
    }
    show();
    raise();
    activateWindow();
    txtSearch->setFocus();
    txtSearch->selectAll();
    CountOn(); // resumes what closing the window interrupted
}

void frmSearch::SetText(const DisplayText *text)
{
    m_search.SetText(text);
    m_isOrdered = m_search.IsCounted();
    Refresh();
}

/// Lists the entries for the typed text and ends the current search.
void frmSearch::Refresh()
{
    m_wanted.clear();
    m_hits = nullptr;
    m_keywordHits.reset();
    m_pendingStep.reset();
    m_hasStepped = false;
    m_entries->SetFilter(txtSearch->text(), m_page().topLine);
    lstKeyword->scrollToTop(); // shows the first row, the hits of the typed text
    lblFound->clear();
    m_sinceShown.invalidate();
    CountOn();
}

void frmSearch::CountOn()
{
    const QDeadlineTimer until(m_sliceMs, Qt::PreciseTimer);
    if (m_pendingStep)
        TryStep(until);
    // While the window is closed, only the count in the study window is visible.
    const bool isAllCounted = !m_pendingStep && (!m_hits || m_hits->CountOn(until)) &&
                              (isHidden() || (m_entries->TypedHits().CountOn(until) && m_search.CountOn(until)));
    if (isAllCounted)
        m_counting->stop();
    else if (!m_counting->isActive())
        m_counting->start(0);
    if (!isAllCounted && m_sinceShown.isValid() && !m_sinceShown.hasExpired(ShowEveryMs))
        return;
    m_sinceShown.start();
    if (m_search.IsCounted() && !std::exchange(m_isOrdered, true)) {
        m_entries->PutFoundFirst();
        lstKeyword->scrollTo(lstKeyword->currentIndex());
    }
    m_entries->ShowCounts();
    ShowState();
}

/// Shows the state of the search here and in the study window.
void frmSearch::ShowState()
{
    if (!m_hits)
        return;
    const TextSpan found = m_page().found;
    const QString where =
        m_pendingStep ? QString(u"探しています　"_s + CountText(m_hits->Count(), false)) : StepText(*m_hits, found);
    const QString wrap = m_pendingStep ? QString() : m_wrap;
    const QString whole = wrap.isEmpty() ? where : QString(where + u'　' + wrap);
    if (whole == lblFound->text())
        return;
    lblFound->setText(whole);
    Q_EMIT StateChanged(m_wanted, m_pendingStep || found.line > 0, where, wrap);
}

void frmSearch::txtSearch_Change()
{
    WriteTrace(u"■frmSearch.txtSearch_Change");
    Refresh();
}

void frmSearch::lstKeyword_Click()
{
    WriteTrace(u"■frmSearch.lstKeyword_Click");
    GoOn(false);
}

void frmSearch::cmdNext_Click()
{
    WriteTrace(u"■frmSearch.cmdNext_Click");
    GoOn(false);
}

void frmSearch::cmdBack_Click()
{
    WriteTrace(u"■frmSearch.cmdBack_Click");
    GoOn(true);
}

void frmSearch::GoOn(bool backwards)
{
    // Without a selection, search for the typed text.
    const QModelIndex chosen = lstKeyword->currentIndex();
    const int row = chosen.isValid() ? chosen.row() : 0;
    if (row >= m_entries->rowCount() || (!chosen.isValid() && txtSearch->text().isEmpty()))
        return;
    const bool isNew = TakeEntry(row);
    // Another entry also continues from the last hit, unless the user has moved to another page since.
    m_pendingStep = PendingStep{m_hasStepped && (!isNew || m_page().isAtFound), backwards};
    lblFound->clear(); // so that ShowState reports even an unchanged state
    CountOn();
    ShowState();
}

/// Makes an entry the one searched for.
/// @return whether it was not already
bool frmSearch::TakeEntry(int row)
{
    const QString wanted = m_entries->SearchText(row);
    const bool isTyped = m_entries->IsTypedText(row);
    if (m_hits && wanted == m_wanted && isTyped == m_isWantedTyped)
        return false;
    m_wanted = wanted;
    m_isWantedTyped = isTyped;
    m_keywordHits = isTyped ? nullptr : m_search.HitsOf(wanted, m_page().topLine);
    m_hits = isTyped ? &m_entries->TypedHits() : m_keywordHits.get();
    return true;
}

void frmSearch::TryStep(const QDeadlineTimer &until)
{
    const SearchedPage page = m_page();
    const bool isFromHit = m_pendingStep->isFromHit && page.found.line > 0;
    const TextSpan from = isFromHit ? page.found : TextSpan{.line = page.topLine};
    const std::optional<HitStep> step = m_hits->Next(from, m_pendingStep->isBackwards, until);
    if (!step)
        return;
    m_wrap = WrapText(*step, m_pendingStep->isBackwards);
    m_pendingStep.reset();
    m_hasStepped = true;
    Q_EMIT SpanChosen(step->span);
}
