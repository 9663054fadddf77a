// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/frmTable.h"

#include "base/modFile.h"
#include "base/modLog.h"
#include "exchange/CodeConversion.h"
#include "exchange/modStudyFromText.h"
#include "platform/modReplaceFile.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NamedControls.h"
#include "widgets/PageFont.h"
#include "widgets/ScreenFit.h"
#include "widgets/frmMsg.h"
#include "widgets/frmWait.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QShowEvent>
#include <QSignalBlocker>

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
    : CommandWindow(u"frmTable"_s, msg, owner), m_studyFolder(studyFolder),
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
    m_found = TableReading();
    TableRefusal refusal{ReadWholeFile(tablePath, &m_bytes).reason};
    if (!refusal)
        refusal = ReadTableBytes(m_bytes, &m_found, &m_table);
    if (refusal) {
        m_msg.Refuse(parentWidget(), TableNotReadMessage(QFileInfo(tablePath).fileName(), refusal));
        return QString();
    }
    ShowTable();
    exec();
    m_table = Table();
    m_bytes.clear();
    return m_madeName;
}

void frmTable::Form_Load()
{
    WriteTrace(u"■frmTable.Form_Load");
    setWindowTitle(u"表から学習ファイルを作る"_s);
    const int linePx = fontMetrics().lineSpacing();
    NameControl(fraTable, u"fraTable"_s, u"表の初めの行"_s);
    fraTable->setBackgroundRole(QPalette::Base);
    fraTable->setMinimumHeight(linePx * 4);
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
    for (const QString &separator : {u","_s, u"\t"_s, u";"_s})
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
    QCheckBox *const ticked = chkHide[qMax(0, m_lastHidden.indexOf(true))];
    ticked->setFocus();
    fraTable->widget()->adjustSize(); // otherwise not laid out until painted
    fraTable->ensureWidgetVisible(ticked);
}

/// Shows a newly opened table with default settings.
void frmTable::ShowTable()
{
    const QSignalBlocker noCode(cboCode);
    const QSignalBlocker noSeparator(cboTableSeparator);
    cboCode->setItemText(0, FoundCode(m_found.code));
    cboCode->setCurrentIndex(0);
    cboTableSeparator->setEditText(SeparatorName(m_found.separator));
    txtName->setText(StudyFileTitle(QFileInfo(m_tablePath).completeBaseName()));
    chkHeader->setChecked(false);
    txtSeparator->setText(TableOptions().between);
    m_fault.clear();
    m_lastHidden = HiddenByDefault(m_table);
    ShowRows(m_lastHidden);
}

/// Reads the table again with the user's settings. Hidden columns stay hidden if the number of columns is unchanged.
/// @param separator  empty to detect it
void frmTable::ReadAgain(const QString &separator)
{
    if (m_fault.isEmpty())
        m_lastHidden = Options().isHidden;
    TableReading reading{Codes[cboCode->currentIndex()], separator};
    m_fault = ReadTableBytes(m_bytes, &reading, &m_table).reason;
    if (separator.isEmpty()) {
        m_found.separator = reading.separator;
        const QSignalBlocker noSeparator(cboTableSeparator);
        cboTableSeparator->setEditText(SeparatorName(reading.separator));
    }
    const bool hasSameColumns = m_lastHidden.size() == m_table.ColumnCount();
    ShowRows(!m_fault.isEmpty() || hasSameColumns ? m_lastHidden : HiddenByDefault(m_table));
}

void frmTable::ShowRows(const QList<bool> &isHidden)
{
    const QString size =
        QString::number(m_table.RowCount()) + u"行 "_s + QString::number(m_table.ColumnCount()) + u"列"_s;
    const QString name = QFileInfo(m_tablePath).fileName();
    lblTable->SetText(m_fault.isEmpty() ? QString(name + u"　"_s + size) : name);
    fraTable->setWidget(TableView(isHidden));
    QWidget *last = fraTable;
    for (QCheckBox *const next : chkHide) {
        setTabOrder(last, next);
        last = next;
    }
    StrikeHeader();
    ShowPreview();
}

/// The first rows, below a check box for each column.
QWidget *frmTable::TableView(const QList<bool> &isHidden)
{
    auto *const view = new QWidget;
    auto *const grid = new QGridLayout(view);
    grid->setHorizontalSpacing(fontMetrics().averageCharWidth() * 3);
    chkHide.clear();
    for (int column = 1; column <= m_table.ColumnCount(); ++column) {
        const QString number = QString::number(column);
        auto *const check = new QCheckBox(u"隠す("_s + (column < 10 ? u"&"_s : QString()) + number + u')', view);
        NameControl(check, u"chkHide"_s + number, number + u"列目を隠す"_s,
                    number + u"列目を空欄にします"_s + (column < 10 ? u" (Alt+"_s + number + u')' : QString()));
        check->setChecked(IsHidden(isHidden, column));
        connect(check, &QCheckBox::clicked, this, &frmTable::chkHide_Click);
        grid->addWidget(check, 0, column);
        chkHide += check;
    }
    for (int row = 1; row <= qMin(m_table.RowCount(), PreviewRows); ++row) {
        for (int column = 1; column <= m_table.CellCount(row); ++column) {
            const QString cell = u"lblCell%1_%2"_s.arg(row).arg(column);
            grid->addWidget(NamedLabel(cell, ShownCell(m_table.Cell(row, column)), view), row, column);
        }
    }
    grid->setColumnStretch(m_table.ColumnCount() + 1, 1);
    grid->setRowStretch(PreviewRows + 1, 1);
    return view;
}

/// Strikes out the header row if it will be left out.
void frmTable::StrikeHeader()
{
    for (int column = 1; m_table.RowCount() > 0 && column <= m_table.CellCount(1); ++column) {
        auto *const cell = fraTable->findChild<QLabel *>(u"lblCell1_%1"_s.arg(column));
        QFont font = cell->font();
        font.setStrikeOut(chkHeader->isChecked());
        cell->setFont(font);
    }
}

void frmTable::cboCode_Change()
{
    WriteTrace(u"■frmTable.cboCode_Change");
    const QString name = cboTableSeparator->currentText();
    ReadAgain(name == SeparatorName(m_found.separator) ? QString() : SeparatorByName(name));
}

void frmTable::cboTableSeparator_Change()
{
    WriteTrace(u"■frmTable.cboTableSeparator_Change");
    ReadAgain(SeparatorByName(cboTableSeparator->currentText()));
}

void frmTable::chkHide_Click()
{
    WriteTrace(u"■frmTable.chkHide_Click");
    ShowPreview();
}

void frmTable::chkHeader_Click()
{
    WriteTrace(u"■frmTable.chkHeader_Click");
    StrikeHeader();
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
    const QString text = PreviewText(m_table, options);
    const QString hint = m_fault.isEmpty() ? PreviewHint(m_table, options, text) : m_fault;
    txtPreview->setPlainText(text);
    cmdOK->setEnabled(hint.isEmpty());
    lblHint->setText(hint);
}

TableOptions frmTable::Options() const
{
    TableOptions options;
    options.between = txtSeparator->text();
    options.skipsFirstRow = chkHeader->isChecked();
    for (const QCheckBox *const check : chkHide)
        options.isHidden += check->isChecked();
    return options;
}

void frmTable::cmdOK_Click()
{
    WriteTrace(u"■frmTable.cmdOK_Click");
    QString fileName;
    if (!TakeName(&fileName))
        return;
    TableTextMaking making(m_table, Options());
    if (!frmWait(u"学習ファイルを作っています。"_s, this).Run(making))
        return;
    const TableStudyText study = making.Take();
    StudyFromText made(study.text, study.rowNumbers);
    QString keptPath;
    if (!AskQuestions(m_msg, this, &made) || !Write(fileName, made, &keptPath))
        return;
    m_isToBeWritten = OfferWriting(m_msg, this,
                                   made.Report(u"表から学習ファイルを作りました。"_s, fileName, keptPath) +
                                       TableRemarks(m_table, study));
    m_madeName = fileName;
    accept();
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
bool frmTable::Write(const QString &fileName, const StudyFromText &made, QString *keptPath)
{
    QByteArray bytes;
    if (const TextRefusal refusal = made.Encode(&bytes))
        return Refuse(refusal.message);
    const QString path = JoinPath(m_studyFolder, fileName);
    const QFileInfo info(path);
    if ((info.isFile() || info.isSymLink()) && !Agrees(ReplaceStudyFileQuestion(path)))
        return false;
    const FileFault fault = ReplaceAndKeep(path, bytes, keptPath);
    return !fault || Refuse(FaultMessage(u"学習ファイルを書き込めません。"_s, fault));
}
