#include "search/frmSearch.h"

#include "base/modLog.h"
#include "widgets/Contrast.h"
#include "widgets/ScreenFit.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QShortcut>

using namespace Qt::Literals::StringLiterals;

SearchModel::SearchModel(KeywordSearch &search, QObject *parent) : QAbstractListModel(parent), m_search(search) {}

void SearchModel::SetFilter(const QString &typed)
{
    beginResetModel();
    m_typed = typed;
    m_typedSpans = m_search.SpansOfText(typed);
    m_keywords = m_search.KeywordsWith(typed);
    endResetModel();
}

QString SearchModel::SearchText(int row) const
{
    return IsTypedText(row) ? m_typed : m_keywords.at(row - (m_typed.isEmpty() ? 0 : 1));
}

const std::vector<TextSpan> &SearchModel::Spans(int row) const
{
    return IsTypedText(row) ? m_typedSpans : m_search.SpansOf(SearchText(row));
}

int SearchModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_keywords.size()) + (m_typed.isEmpty() ? 0 : 1);
}

QVariant SearchModel::data(const QModelIndex &index, int role) const
{
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return QVariant();
    const QString wanted = IsTypedText(index.row()) ? QString(u'「' + m_typed + u'」') : SearchText(index.row());
    return QString(wanted + u"　"_s + QString::number(Spans(index.row()).size()) + u"か所"_s);
}

frmSearch::frmSearch(KeywordSearch &search, QWidget *owner)
    : QDialog(owner), m_entries(new SearchModel(search, this)), lblHint(new QLabel(this)),
      txtSearch(new QLineEdit(this)), lstKeyword(new QListView(this))
{
    setObjectName(u"frmSearch"_s);
    setWindowTitle(u"キーワード検索"_s);
    lblHint->setObjectName(u"lblHint"_s);
    lblHint->setTextFormat(Qt::PlainText);
    lblHint->setWordWrap(true);
    lblHint->setText(search.List().fault);
    lblHint->setVisible(!search.List().fault.isEmpty());
    txtSearch->setObjectName(u"txtSearch"_s);
    txtSearch->setPlaceholderText(u"キーワードまたは本文の言葉"_s);
    txtSearch->setAccessibleName(u"探す言葉"_s);
    DimPlaceholder();
    lstKeyword->setAccessibleName(u"キーワード"_s);
    lstKeyword->setObjectName(u"lstKeyword"_s);
    lstKeyword->setModel(m_entries);
    lstKeyword->setUniformItemSizes(true); // measuring every row would search for every keyword
    lstKeyword->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstKeyword->setTextElideMode(Qt::ElideMiddle); // of a long word, not of the number of its places
    lstKeyword->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    lstKeyword->setMinimumHeight(4 * fontMetrics().height());
    auto *const cmdNext = new QPushButton(u"次へ(F3)"_s, this);
    cmdNext->setObjectName(u"cmdNext"_s);
    cmdNext->setToolTip(u"次の場所に進みます (Enter, F3)"_s);
    cmdNext->setDefault(true); // Enter in the list reaches it too
    auto *const cmdBack = new QPushButton(u"前へ(Shift+F3)"_s, this);
    cmdBack->setObjectName(u"cmdBack"_s);
    cmdBack->setToolTip(u"前の場所に戻ります (Shift+F3)"_s);
    cmdBack->setAutoDefault(false);
    connect(txtSearch, &QLineEdit::textChanged, this, &frmSearch::txtSearch_Change);
    connect(lstKeyword, &QListView::clicked, this, &frmSearch::lstKeyword_Click);
    connect(cmdNext, &QPushButton::clicked, this, &frmSearch::cmdNext_Click);
    connect(cmdBack, &QPushButton::clicked, this, &frmSearch::cmdBack_Click);
    connect(new QShortcut(Qt::Key_F3, this), &QShortcut::activated, this, [this] { GoOn(false); });
    connect(new QShortcut(Qt::SHIFT | Qt::Key_F3, this), &QShortcut::activated, this, [this] { GoOn(true); });

    auto *const grid = new QGridLayout(this);
    grid->addWidget(txtSearch, 0, 0, 1, 2);
    grid->addWidget(lstKeyword, 1, 0, 1, 2);
    grid->addWidget(lblHint, 2, 0, 1, 2);
    grid->addWidget(cmdNext, 3, 0);
    grid->addWidget(cmdBack, 3, 1);
    const QSize size(40 * fontMetrics().averageCharWidth(), 24 * fontMetrics().height());
    resize(size.expandedTo(minimumSizeHint()).boundedTo(AvailableSize(this)));
    Refresh();
}

void frmSearch::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        DimPlaceholder();
}

/// Not every dark palette has a light colour for this.
void frmSearch::DimPlaceholder()
{
    QPalette dimmed;
    dimmed.setColor(QPalette::PlaceholderText,
                    Dimmed(palette().color(QPalette::Text), palette().color(QPalette::Base)));
    txtSearch->setPalette(dimmed);
}

void frmSearch::Open()
{
    show();
    raise();
    activateWindow();
    txtSearch->setFocus();
    txtSearch->selectAll();
}

void frmSearch::Refresh()
{
    m_wanted.clear();
    m_spans.clear();
    m_at = TextSpan();
    m_entries->SetFilter(txtSearch->text());
    lstKeyword->scrollToTop(); // where it stands whether the text is found at all
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
    // Without a choice of the learner's, what was typed is meant.
    const QModelIndex chosen = lstKeyword->currentIndex();
    const int row = chosen.isValid() ? chosen.row() : 0;
    if (row >= m_entries->rowCount() || (!chosen.isValid() && txtSearch->text().isEmpty()))
        return;
    if (m_entries->SearchText(row) != m_wanted) {
        m_wanted = m_entries->SearchText(row);
        m_spans = m_entries->Spans(row);
    }
    m_at = NextSpan(m_spans, m_at, backwards);
    Q_EMIT SpanChosen(m_at, m_wanted);
}
