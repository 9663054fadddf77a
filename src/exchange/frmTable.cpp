// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/frmTable.h"

#include "base/modFile.h"
#include "base/modLog.h"
#include "exchange/MendFiles.h"
#include "exchange/modStudyFromText.h"
#include "platform/modReplaceFile.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/PageFont.h"
#include "widgets/ScreenFit.h"
#include "widgets/frmMsg.h"
#include "widgets/frmWait.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDeadlineTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QShowEvent>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>
#include <tuple>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype MaxCellChars = 24; // shown of a cell
constexpr int MaxBetweenChars = 20;
constexpr CharCode Codes[] = {CharCode::None,    CharCode::Sjis, CharCode::Utf8,
                              CharCode::Utf16Le, CharCode::Euc,  CharCode::Jis}; // the first means automatic

/// A cell as shown in the window: on one line, shortened if long.
QString ShownCell(QStringView cell)
{
    const QString text = cell.first(qMin(cell.size(), MaxCellChars + 1)).toString().simplified();
    return cell.size() > MaxCellChars ? text.left(MaxCellChars) + u'…' : text;
}

/// Caption of the automatic choice, with the encoding that was detected.
QString FoundCode(CharCode code)
{
    return u"自動（"_s + TableCodeName(code) + u'）';
}

} // namespace

frmTable::frmTable(frmMsg &msg, const QString &studyFolder, QWidget *owner)
    : CommandWindow(u"frmTable"_s, msg, owner), m_studyFolder(studyFolder), m_reading(new QTimer(this)),
      lblTable(AddFileLine(u"表："_s, u"lblTable"_s, 60)), cboCode(new QComboBox(this)),
      cboTableSeparator(new QComboBox(this)), fraTable(new QScrollArea(this)), txtSeparator(new QLineEdit(this)),
      txtName(new QLineEdit(this)), txtPreview(new QPlainTextEdit(this)),
      lblHint(NamedLabel(u"lblHint"_s, QString(), this))
{
    Form_Load();
}

QString frmTable::AskForTable(const QString &folder, QWidget *owner)
{
    return QFileDialog::getOpenFileName(owner, u"表の選択"_s, folder,
                                        u"表 (*.csv *.tsv *.tab *.txt);;すべてのファイル (*)"_s);
}

QString frmTable::Make(const QString &tablePath)
{
    m_madeName.clear();
    m_isToBeWritten = false;
    m_tablePath = tablePath;
    TableRefusal refusal{ReadWholeFile(tablePath, &m_bytes).reason};
    if (!refusal)
        refusal = Decode(CharCode::None);
    if (!refusal) {
        m_source.Split();
        if (!frmWait(u"表を読んでいます。"_s, parentWidget()).Run(m_source))
            return QString();
        refusal = m_source.Refusal();
    }
    if (refusal) {
        m_msg.Refuse(parentWidget(), TableNotReadMessage(QFileInfo(tablePath).fileName(), refusal));
        return QString();
    }
    ShowTable();
    exec();
    m_reading->stop();
    m_source = TableSource();
    m_bytes.clear();
    return m_madeName;
}

TableRefusal frmTable::Decode(CharCode code)
{
    m_pictures.emplace(m_tablePath, m_studyFolder);
    return m_source.Decode(m_bytes, code, [this](const QString &file) { return m_pictures->NameOf(file); });
}

void frmTable::Form_Load()
{
    WriteTrace(u"■frmTable.Form_Load");
    setWindowTitle(u"表から学習ファイルを作る"_s);
    const int linePx = fontMetrics().lineSpacing();
    NameControl(fraTable, u"fraTable"_s, u"表の初めの行"_s);
    fraTable->setBackgroundRole(QPalette::Base);
    fraTable->setMinimumHeight(linePx * 8);
    connect(m_reading, &QTimer::timeout, this, &frmTable::GoOnReading);
    NameControl(txtPreview, u"txtPreview"_s, u"できる学習ファイルの初めの行"_s, u"このように作られます (Alt+P)"_s);
    txtPreview->setReadOnly(true);
    txtPreview->setTabChangesFocus(true);
    txtPreview->setLineWrapMode(QPlainTextEdit::NoWrap);
    txtPreview->setFont(PageFont());
    txtPreview->setMinimumHeight(linePx * 2);

    Column()->addLayout(ReadingRow());
    Column()->addWidget(fraTable, 3);
    chkHeader = AddChoice<QCheckBox>(u"chkHeader"_s, u"1行目は見出し（学習ファイルに入れない）(&H)"_s,
                                     u"1行目を学習ファイルに入れません (Alt+H)"_s);
    connect(chkHeader, &QCheckBox::clicked, this, &frmTable::chkHeader_Click);
    Column()->addLayout(Inputs());
    Column()->addWidget(LabelOf(txtPreview, u"lblPreview"_s, u"できる学習ファイル(&P)："_s));
    Column()->addWidget(txtPreview, 2);
    AddAnswers(u"作る(&M)"_s, u"学習ファイルを作ります (Enter)"_s, u"作らずに戻ります (Esc)"_s, lblHint,
               QSize(fontMetrics().averageCharWidth() * 90, linePx * 26));
    SetTabOrder({cboCode, cboTableSeparator, fraTable, chkHeader, txtSeparator, txtName, txtPreview, cmdOK, cmdCancel});
}

QLayout *frmTable::ReadingRow()
{
    NameControl(cboCode, u"cboCode"_s, u"表の文字コード"_s, u"表の文字が正しく見えないときに選びます (Alt+C)"_s);
    for (const CharCode code : Codes)
        cboCode->addItem(code == CharCode::None ? FoundCode(CharCode::Sjis) : TableCodeName(code)); // sizes the box
    connect(cboCode, &QComboBox::currentIndexChanged, this, &frmTable::cboCode_Change);
    NameControl(cboTableSeparator, u"cboTableSeparator"_s, u"表の区切り"_s,
                u"表の列と列の間にある文字。「 - 」のような文字も入力できます (Alt+S)"_s);
    cboTableSeparator->setEditable(true);
    cboTableSeparator->setInsertPolicy(QComboBox::NoInsert);
    cboTableSeparator->lineEdit()->setObjectName(u"txtTableSeparator"_s);
    cboTableSeparator->lineEdit()->setMaxLength(MaxBetweenChars);
    for (const QString &separator : {u","_s, u"\t"_s, u";"_s, u" - "_s, u" \u2013 "_s, u" \u2014 "_s})
        cboTableSeparator->addItem(SeparatorName(separator));
    connect(cboTableSeparator, &QComboBox::editTextChanged, this, &frmTable::cboTableSeparator_Change);

    auto *const row = new QHBoxLayout;
    row->addWidget(LabelOf(cboCode, u"lblCode"_s, u"文字コード(&C)："_s));
    row->addWidget(cboCode);
    row->addWidget(LabelOf(cboTableSeparator, u"lblTableSeparator"_s, u"表の区切り(&S)："_s));
    row->addWidget(cboTableSeparator);
    row->addStretch();
    return row;
}

QLayout *frmTable::Inputs()
{
    NameControl(txtSeparator, u"txtSeparator"_s, u"列の間に入れる文字"_s,
                u"列と列の間に入れる文字。初めは全角の空白です (Alt+B)"_s);
    txtSeparator->setMaxLength(MaxBetweenChars);
    FitToText(txtSeparator, u"、、、、"_s);
    connect(txtSeparator, &QLineEdit::textChanged, this, &frmTable::txtSeparator_Change);
    NameControl(txtName, u"txtName"_s, u"学習ファイルの名前"_s, u"作る学習ファイルの名前 (Alt+N)"_s);

    auto *const row = new QHBoxLayout;
    row->addWidget(LabelOf(txtSeparator, u"lblSeparator"_s, u"列の間に入れる文字(&B)："_s));
    row->addWidget(txtSeparator);
    row->addWidget(LabelOf(txtName, u"lblName"_s, u"学習ファイルの名前(&N)："_s));
    row->addWidget(txtName, 1);
    row->addWidget(NamedLabel(u"lblTxt"_s, u".txt"_s, this));
    return row;
}

void frmTable::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (!event->spontaneous()) // not when it was only minimised
        Form_Activate();
}

void frmTable::Form_Activate()
{
    WriteTrace(u"■frmTable.Form_Activate");
    const auto isHidden = [](const TableColumn &each) { return each.use == ColumnUse::Hide; };
    const auto hidden = std::ranges::find_if(m_columns, isHidden);
    const int column = hidden == m_columns.end() ? m_columns.front().column : hidden->column;
    auto *const use = fraTable->findChild<QComboBox *>(u"cboUse"_s + QString::number(column));
    use->setFocus();
    fraTable->widget()->adjustSize(); // otherwise not laid out until painted
    fraTable->ensureWidgetVisible(use->parentWidget());
}

/// Shows a newly opened table with default settings.
void frmTable::ShowTable()
{
    const QSignalBlocker noCode(cboCode);
    const QSignalBlocker noSeparator(cboTableSeparator);
    cboCode->setItemText(0, FoundCode(m_source.Code()));
    cboCode->setCurrentIndex(0);
    cboTableSeparator->setEditText(SeparatorName(m_source.FoundSeparator()));
    txtName->setText(StudyFileTitle(QFileInfo(m_tablePath).completeBaseName()));
    txtSeparator->setText(TableOptions().between);
    m_isHeadingChosen = false;
    m_isNew = true;
    m_firstColumns = 0;
    ShowRows();
}

/// Reads the table again with the user's settings: the rows shown at once. The columns stay as they are if their number
/// is unchanged. @param separator  empty for the one that was detected
void frmTable::ReadAgain(const QString &separator)
{
    constexpr int atOnceMs = 10; // for the rows shown, however long they are
    m_isNew = true;
    m_source.Split(separator);
    if (m_source.GoOn(QDeadlineTimer(atOnceMs, Qt::PreciseTimer), PreviewRows))
        m_reading->start(0);
    else
        m_reading->stop();
    ShowRows();
}

void frmTable::GoOnReading()
{
    constexpr int sliceMs = 5;
    const bool hasMore = m_source.GoOn(QDeadlineTimer(sliceMs, Qt::PreciseTimer));
    if (!hasMore)
        m_reading->stop();
    const Table &rows = m_source.Rows();
    if (m_shownColumns != rows.ColumnCount() || m_shownRows != qMin(rows.RowCount(), PreviewRows))
        ShowRows();
    else if (!hasMore)
        ShowState();
}

/// @return false if the user has stopped it, or the table is refused, which the user knows then
bool frmTable::FinishReading()
{
    if (m_source.IsRead())
        return true;
    m_reading->stop();
    if (!frmWait(u"表を読んでいます。"_s, this).Run(m_source)) {
        m_reading->start(0);
        return false;
    }
    ShowRows();
    return cmdOK->isEnabled() || Refuse(lblHint->text());
}

/// Shows the first rows as far as they have been read.
void frmTable::ShowRows()
{
    const Table &rows = m_source.Rows();
    if (m_isNew && rows.RowCount() > 0) {
        m_isNew = false;
        if (m_firstColumns != rows.ColumnCount())
            m_columns = ColumnsByDefault(rows);
        m_firstColumns = rows.ColumnCount();
        if (!m_isHeadingChosen)
            chkHeader->setChecked(GuessHeading(rows));
    }
    while (m_columns.size() < rows.ColumnCount()) // a later row has more
        m_columns.push_back({int(m_columns.size()) + 1, ColumnUse::Show});
    m_shownRows = qMin(rows.RowCount(), PreviewRows);
    m_shownColumns = rows.ColumnCount();
    fraTable->setWidget(TableView());
    OrderTabs();
    EnableMoves();
    StrikeLeftOut();
    ShowState();
}

/// Shows the number of rows once it is known, and what can be made of them.
void frmTable::ShowState()
{
    const Table &rows = m_source.Rows();
    const QString size = QString::number(rows.RowCount()) + u"行 "_s + QString::number(rows.ColumnCount()) + u"列"_s;
    const QString name = QFileInfo(m_tablePath).fileName();
    lblTable->SetText(m_source.IsRead() && !m_source.Refusal() ? QString(name + u"　"_s + size) : name);
    ShowPreview();
}

/// The first rows, each column below its head, in the order of the columns.
QWidget *frmTable::TableView()
{
    auto *const view = new QWidget;
    const Table &rows = m_source.Rows();
    m_grid = new QGridLayout(view);
    m_grid->setHorizontalSpacing(fontMetrics().averageCharWidth() * 3);
    int place = 0;
    for (const TableColumn &each : m_columns) {
        if (each.column > m_shownColumns)
            continue;
        m_grid->addWidget(ColumnHead(each), 0, ++place);
        for (int row = 1; row <= m_shownRows; ++row) {
            if (each.column > rows.CellCount(row))
                continue;
            const QString name = u"lblCell%1_%2"_s.arg(row).arg(each.column);
            m_grid->addWidget(NamedLabel(name, ShownCell(rows.Cell(row, each.column)), view), row, place);
        }
    }
    m_grid->setColumnStretch(m_shownColumns + 1, 1);
    m_grid->setRowStretch(PreviewRows + 1, 1);
    return view;
}

/// What becomes of a column, and the buttons that move it.
QWidget *frmTable::ColumnHead(const TableColumn &each)
{
    const int column = each.column;
    const QString number = QString::number(column);
    auto *const head = new QWidget;
    head->setObjectName(u"fraColumn"_s + number);
    auto *const use = new QComboBox(head);
    NameControl(use, u"cboUse"_s + number, number + u"列目"_s,
                number + u"列目を空欄にするか，そのまま見せるか，使わないかです"_s +
                    (column < 10 ? u" (Alt+"_s + number + u')' : QString()));
    use->addItems({u"隠す"_s, u"見せる"_s, u"使わない"_s}); // in enum order
    use->setCurrentIndex(int(each.use));
    connect(use, &QComboBox::currentIndexChanged, this, [this, column] { cboUse_Change(column); });

    auto *const row = new QHBoxLayout;
    row->addWidget(LabelOf(use, u"lblUse"_s + number, (column < 10 ? u"&"_s : QString()) + number + u"列目"_s), 1);
    const auto addMove = [&](const QString &name, const QString &arrow, const QString &whereTo, Qt::Key key, int by) {
        QPushButton *const button = NamedButton(
            name + number, arrow, number + u"列目を"_s + whereTo + u"へ移します (Alt+"_s + arrow + u')', head);
        button->setAccessibleName(number + u"列目を"_s + whereTo + u"へ"_s);
        button->setFixedWidth(button->fontMetrics().horizontalAdvance(arrow) + 2 * ButtonMargin(button->fontMetrics()));
        const auto move = [this, column, by] { cmdMove_Click(column, by); };
        connect(button, &QPushButton::clicked, this, move);
        auto *const shortcut = new QShortcut(Qt::ALT | key, head, move, Qt::WidgetWithChildrenShortcut);
        shortcut->setObjectName(name + u"Key"_s + number);
        row->addWidget(button);
    };
    addMove(u"cmdLeft"_s, u"←"_s, u"左"_s, Qt::Key_Left, -1);
    addMove(u"cmdRight"_s, u"→"_s, u"右"_s, Qt::Key_Right, 1);
    auto *const rows = new QVBoxLayout(head);
    rows->setContentsMargins(FocusRingReach, 0, FocusRingReach, 0);
    rows->addLayout(row);
    rows->addWidget(use);
    return head;
}

/// Makes the Tab key follow the order of the columns: first along the arrows, then along what is below them, so that it
/// never goes up.
void frmTable::OrderTabs()
{
    QWidget *last = fraTable;
    for (const QStringList &names : {QStringList{u"cmdLeft"_s, u"cmdRight"_s}, QStringList{u"cboUse"_s}})
        for (const TableColumn &each : m_columns)
            for (const QString &name : names)
                if (auto *const next = fraTable->findChild<QWidget *>(name + QString::number(each.column))) {
                    setTabOrder(last, next);
                    last = next;
                }
}

void frmTable::EnableMoves()
{
    int place = 0;
    for (const TableColumn &each : m_columns) {
        const QString number = QString::number(each.column);
        auto *const left = fraTable->findChild<QWidget *>(u"cmdLeft"_s + number);
        if (!left)
            continue;
        left->setEnabled(++place > 1);
        fraTable->findChild<QWidget *>(u"cmdRight"_s + number)->setEnabled(place < m_shownColumns);
    }
}

/// Strikes out what will be left out: the heading and the columns that are not used.
void frmTable::StrikeLeftOut()
{
    for (const TableColumn &each : m_columns) {
        for (int row = 1; row <= m_shownRows; ++row) {
            auto *const cell = fraTable->findChild<QLabel *>(u"lblCell%1_%2"_s.arg(row).arg(each.column));
            if (!cell)
                continue;
            QFont font = cell->font();
            font.setStrikeOut((row == 1 && chkHeader->isChecked()) || each.use == ColumnUse::Leave);
            cell->setFont(font);
        }
    }
}

void frmTable::cboCode_Change()
{
    WriteTrace(u"■frmTable.cboCode_Change");
    const QString name = cboTableSeparator->currentText();
    const bool isFound = name == SeparatorName(m_source.FoundSeparator());
    std::ignore = Decode(Codes[cboCode->currentIndex()]);
    if (isFound) {
        const QSignalBlocker noSeparator(cboTableSeparator);
        cboTableSeparator->setEditText(SeparatorName(m_source.FoundSeparator()));
    }
    ReadAgain(isFound ? QString() : SeparatorByName(name));
}

void frmTable::cboTableSeparator_Change()
{
    WriteTrace(u"■frmTable.cboTableSeparator_Change");
    ReadAgain(SeparatorByName(cboTableSeparator->currentText()));
}

void frmTable::cboUse_Change(int column)
{
    WriteTrace(u"■frmTable.cboUse_Change");
    const auto *const use = fraTable->findChild<QComboBox *>(u"cboUse"_s + QString::number(column));
    std::ranges::find(m_columns, column, &TableColumn::column)->use = ColumnUse(use->currentIndex());
    StrikeLeftOut();
    ShowPreview();
}

/// @param by  -1 to the left, 1 to the right
void frmTable::cmdMove_Click(int column, int by)
{
    WriteTrace(u"■frmTable.cmdMove_Click");
    const qsizetype from = std::ranges::find(m_columns, column, &TableColumn::column) - m_columns.begin();
    qsizetype to = from + by;
    while (to >= 0 && to < m_columns.size() && m_columns[to].column > m_shownColumns)
        to += by;
    if (to < 0 || to >= m_columns.size())
        return;
    const QWidget *const head = fraTable->findChild<QWidget *>(u"fraColumn"_s + QString::number(column));
    int row = 0;
    int place = 0;
    int span = 0;
    m_grid->getItemPosition(m_grid->indexOf(head), &row, &place, &span, &span);
    for (row = 0; row <= m_shownRows; ++row) {
        QLayoutItem *const moved = m_grid->itemAtPosition(row, place);
        QLayoutItem *const other = m_grid->itemAtPosition(row, place + by);
        QWidget *const movedWidget = moved ? moved->widget() : nullptr;
        QWidget *const otherWidget = other ? other->widget() : nullptr;
        for (QWidget *const widget : {movedWidget, otherWidget})
            if (widget)
                m_grid->removeWidget(widget);
        if (movedWidget)
            m_grid->addWidget(movedWidget, row, place + by);
        if (otherWidget)
            m_grid->addWidget(otherWidget, row, place);
    }
    m_columns.swapItemsAt(from, to);
    OrderTabs();
    if (place + by == 1 || place + by == m_shownColumns) // its button is disabled now
        fraTable->findChild<QWidget *>(u"cboUse"_s + QString::number(column))->setFocus();
    EnableMoves();
    fraTable->widget()->layout()->activate();
    fraTable->ensureWidgetVisible(const_cast<QWidget *>(head));
    ShowPreview();
}

void frmTable::chkHeader_Click()
{
    WriteTrace(u"■frmTable.chkHeader_Click");
    m_isHeadingChosen = true;
    StrikeLeftOut();
    ShowPreview();
}

void frmTable::txtSeparator_Change()
{
    WriteTrace(u"■frmTable.txtSeparator_Change");
    ShowPreview();
}

void frmTable::ShowPreview()
{
    const TableOptions options = Options();
    const Table &rows = m_source.Rows();
    const QString text = PreviewText(rows, options);
    const QString fault = m_source.Refusal().reason;
    const QString hint = fault.isEmpty() ? PreviewHint(rows, options, text) : fault;
    txtPreview->setPlainText(text);
    cmdOK->setEnabled(hint.isEmpty());
    lblHint->setText(hint);
}

TableOptions frmTable::Options() const
{
    return {.columns = m_columns, .between = txtSeparator->text(), .skipsFirstRow = chkHeader->isChecked()};
}

void frmTable::cmdOK_Click()
{
    WriteTrace(u"■frmTable.cmdOK_Click");
    QString fileName;
    if (!FinishReading() || !TakeName(&fileName))
        return;
    TableTextMaking making(m_source.Rows(), Options());
    if (!frmWait(u"学習ファイルを作っています。"_s, this).Run(making))
        return;
    const TableStudyText study = making.Take();
    StudyFromText made(study.text, study.rowNumbers);
    QString keptPath;
    qsizetype picturesTaken = 0;
    if (!MakeAsChosen(m_msg, this, fileName, &made) || !Write(fileName, made, &keptPath, &picturesTaken))
        return;
    m_isToBeWritten =
        OfferWriting(m_msg, this,
                     made.Report(u"表から学習ファイルを作りました。"_s, fileName, keptPath) +
                         TableRemarks(m_source.Rows(), study) + PictureRemarks(*m_pictures, picturesTaken));
    m_madeName = fileName;
    accept();
}

/// Copies the pictures that a text refers to into the folder of study files, replacing others only with the user's
/// consent. @param taken  receives their number. @return false if nothing is to be written; the user knows why
bool frmTable::TakePictures(const QString &text, qsizetype *taken)
{
    QList<PictureToInsert> pictures = m_pictures->UsedIn(text);
    QStringList replaced;
    for (const PictureToInsert &picture : pictures)
        if (!picture.refusal.isEmpty())
            return Refuse(picture.refusal);
        else if (MustAskFor(picture, m_pictures->SourceOf(picture)))
            replaced += picture.name;
    if (!replaced.isEmpty()) {
        const MsgResult answer = m_msg.Ask(this, ReplacePicturesQuestion(replaced));
        if (answer == MsgResult::None)
            return false;
        if (answer == MsgResult::Cancel)
            pictures.removeIf([](const PictureToInsert &picture) { return picture.mustAsk; });
    }
    FileFault fault;
    const auto copy = [&](const QDeadlineTimer &deadline) {
        while (*taken < pictures.size() && !fault) {
            fault = TakePicture(m_pictures->SourceOf(pictures[*taken]), pictures[*taken]);
            ++*taken;
            if (deadline.hasExpired())
                break;
        }
        return *taken < pictures.size() && !fault;
    };
    if (!frmWait(u"図を入れています。"_s, this).Run(copy, [&] { return double(*taken) / double(pictures.size()); }))
        return false;
    return !fault || Refuse(FaultMessage(u"図をコピーできません。"_s, fault));
}

/// Takes the file name, and shows it as it will be saved, so that the user can find the file.
bool frmTable::TakeName(QString *fileName)
{
    const QString title = StudyFileTitle(txtName->text());
    txtName->setText(title);
    *fileName = title + u".txt"_s;
    const QString refusal = TitleRefusal(title);
    if (refusal.isEmpty())
        return true;
    txtName->setFocus();
    return Refuse(refusal);
}

/// Writes the file, replacing an existing one only with the user's consent. The old one is kept under a free name.
/// Its pictures come before it.
bool frmTable::Write(const QString &fileName, const StudyFromText &made, QString *keptPath, qsizetype *picturesTaken)
{
    QByteArray bytes;
    if (const TextRefusal refusal = made.Encode(&bytes))
        return Refuse(refusal.message);
    const QString path = JoinPath(m_studyFolder, fileName);
    const QFileInfo info(path);
    if ((info.isFile() || info.isSymLink()) && !Agrees(ReplaceStudyFileQuestion(path)))
        return false;
    if (!TakePictures(made.Text(), picturesTaken))
        return false;
    const FileFault fault = ReplaceAndKeep(path, bytes, keptPath);
    return !fault || Refuse(FaultMessage(u"学習ファイルを書き込めません。"_s, fault));
}
