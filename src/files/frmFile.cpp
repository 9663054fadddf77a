#include "files/frmFile.h"

#include "base/modCodePage.h"
#include "base/modDateText.h"
#include "base/modFile.h"
#include "base/modLog.h"
#include "base/modProduct.h"
#include "files/HistoryChart.h"
#include "files/StudyFileModel.h"
#include "files/modPrintableCopy.h"
#include "platform/modReplaceFile.h"
#include "settings/frmMsg.h"
#include "settings/modEditor.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"
#include "widgets/PageFont.h"
#include "widgets/ScreenFit.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStringListModel>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A label that cuts out the middle of what is too long for it: a long path must not push the buttons off the screen.
class ElidedLabel : public QLabel
{
  public:
    ElidedLabel(const QString &name, QWidget *parent) : QLabel(parent)
    {
        setObjectName(name);
        setTextFormat(Qt::PlainText);
        setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    }

  protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter,
                                fontMetrics().elidedText(text(), Qt::ElideMiddle, width()));
    }
};

QLabel *NamedLabel(const QString &name, const QString &text, QWidget *parent)
{
    auto *const label = new QLabel(text, parent);
    label->setObjectName(name);
    return label;
}

} // namespace

frmFile::frmFile(Desktop &desktop, StudyDatabase &database, frmMsg &msg, const QString &applicationFolder,
                 const QString &userName, QWidget *owner)
    : QDialog(owner), m_desktop(desktop), m_database(database), m_msg(msg),
      m_folder(JoinPath(applicationFolder, u"txt"_s)), m_reportFolder(JoinPath(applicationFolder, u"rec"_s)),
      m_userName(userName), m_files(new StudyFileModel(m_folder, this)), lstFile(new QListView(this)),
      lblFolder(new ElidedLabel(u"lblFolder"_s, this)), lblUserName(new ElidedLabel(u"lblUserName"_s, this)),
      m_records(new QStringListModel(this)), lstRecord(new QListView(this)), txtWeekN(new QLineEdit(this)),
      txtYmd(new QLineEdit(this)), lblSumTime(new QLabel(this)), lblSumAns(new QLabel(this)),
      picHistory(new HistoryChart(this))
{
    setObjectName(u"frmFile"_s);
    auto *const content = new QWidget(this);
    content->setObjectName(u"content"_s);
    auto *const halves = new QBoxLayout(QBoxLayout::LeftToRight, content);
    halves->addLayout(FileControls(), 1);
    halves->addSpacing(fontMetrics().averageCharWidth());
    halves->addLayout(HistoryControls(), 1);
    SetTabOrder();
    if (content->minimumSizeHint().width() > RoomOnScreen(this).width())
        halves->setDirection(QBoxLayout::TopToBottom);
    FitToScreen(this, content, QSize(fontMetrics().averageCharWidth() * 120, fontMetrics().lineSpacing() * 29));
    Form_Load();
}

frmFile::~frmFile() = default;

QLayout *frmFile::FileControls()
{
    lstFile->setObjectName(u"lstFile"_s);
    lstFile->setAccessibleName(u"学習ファイル"_s);
    lstFile->setModel(m_files);
    lstFile->setItemDelegate(new StudyFileDelegate(lstFile));
    lstFile->setUniformItemSizes(true); // measuring every row would check every file
    lstFile->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstFile->setSpacing(1);
    lstFile->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // a row fits its name and remarks into the width
    lstFile->setMinimumSize(fontMetrics().averageCharWidth() * 30, fontMetrics().lineSpacing() * 8);
    connect(lstFile, &QListView::doubleClicked, this, &frmFile::cmdSelect_Click);

    lblFolder->setText(m_folder.Path());
    lblFolder->setToolTip(m_folder.Path());
    lblUserName->setText(m_userName);
    lblUserName->setToolTip(m_userName);

    QPushButton *const cmdSelect = AddButton(u"cmdSelect"_s, u"このファイルで学習(&S)"_s, &frmFile::cmdSelect_Click);
    QPushButton *const cmdEdit = AddButton(u"cmdEdit"_s, u"編集(&E)"_s, &frmFile::cmdEdit_Click);
    QPushButton *const cmdRefresh = AddButton(u"cmdRefresh"_s, u"一覧を更新(&R)"_s, &frmFile::cmdRefresh_Click);
    QPushButton *const cmdOpenFolder =
        AddButton(u"cmdOpenFolder"_s, u"フォルダを開く(&O)"_s, &frmFile::cmdOpenFolder_Click);
    QPushButton *const cmdConvFile = AddButton(u"cmdConvFile"_s, u"印刷用に変換(&P)"_s, &frmFile::cmdConvFile_Click);
    QPushButton *const cmdCancel = AddButton(u"cmdCancel"_s, u"キャンセル"_s, &frmFile::cmdCancel_Click);
    QPushButton *const cmdEnd = AddButton(u"cmdEnd"_s, u"終了(&X)"_s, &frmFile::cmdEnd_Click);
    cmdSelect->setDefault(true);
    cmdSelect->setToolTip(u"選択したファイルで学習します (Enter)"_s);
    cmdEdit->setToolTip(u"選択したファイルをテキストエディタで開きます (Alt+E)"_s);
    cmdRefresh->setToolTip(u"フォルダの中をもう一度調べます (Alt+R)"_s);
    cmdOpenFolder->setToolTip(u"学習ファイルのフォルダを開きます (Alt+O)"_s);
    cmdConvFile->setToolTip(u"正解を空欄にした印刷用のファイルを作ります (Alt+P)"_s);
    cmdCancel->setToolTip(u"選ばずに学習画面に戻ります (Esc)"_s);
    cmdEnd->setToolTip(u"瞬記帳を終了します (Alt+X)"_s);

    auto *const buttons = new QVBoxLayout;
    for (QPushButton *const button : {cmdSelect, cmdEdit, cmdRefresh, cmdOpenFolder, cmdConvFile})
        buttons->addWidget(button);
    buttons->addStretch();
    buttons->addWidget(cmdCancel);
    buttons->addWidget(cmdEnd);

    auto *const grid = new QGridLayout;
    grid->addWidget(NamedLabel(u"lblFolderCaption"_s, u"フォルダ："_s, this), 0, 0);
    grid->addWidget(lblFolder, 0, 1);
    grid->addWidget(NamedLabel(u"lblUserNameCaption"_s, u"利用者："_s, this), 1, 0);
    grid->addWidget(lblUserName, 1, 1);
    grid->addWidget(lstFile, 2, 0, 1, 2);
    grid->addLayout(buttons, 2, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(2, 1);
    return grid;
}

QLayout *frmFile::HistoryControls()
{
    lstRecord->setObjectName(u"lstRecord"_s);
    lstRecord->setAccessibleName(u"学習記録"_s);
    lstRecord->setModel(m_records);
    lstRecord->setFont(PageFont()); // the numbers stand below each other
    lstRecord->setUniformItemSizes(true);
    lstRecord->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstRecord->setMinimumSize(fontMetrics().averageCharWidth() * 40, fontMetrics().lineSpacing() * 8);
    txtWeekN->setObjectName(u"txtWeekN"_s);
    txtWeekN->setAccessibleName(u"週の数"_s);
    txtWeekN->setToolTip(u"何週間分の記録を表示するか (Alt+K)"_s);
    FitToText(txtWeekN, QString::number(MostWeeks));
    txtWeekN->setAlignment(Qt::AlignRight);
    txtYmd->setObjectName(u"txtYmd"_s);
    txtYmd->setAccessibleName(u"最後の日"_s);
    txtYmd->setToolTip(u"記録の最後の日（年/月/日） (Alt+D)"_s);
    FitToText(txtYmd, u"0000/00/00"_s);
    lblSumTime->setObjectName(u"lblSumTime"_s);
    lblSumAns->setObjectName(u"lblSumAns"_s);
    lblSumTime->setAccessibleDescription(u"総学習時間"_s);
    lblSumAns->setAccessibleDescription(u"総回答数"_s);
    connect(txtWeekN, &QLineEdit::textChanged, this, &frmFile::txtWeekN_Change);
    connect(txtYmd, &QLineEdit::textChanged, this, &frmFile::txtYmd_Change);
    // The list follows the typing. Enter there must not open a file.
    connect(txtWeekN, &QLineEdit::returnPressed, txtWeekN, &QLineEdit::selectAll);
    connect(txtYmd, &QLineEdit::returnPressed, txtYmd, &QLineEdit::selectAll);

    auto *const span = new QHBoxLayout;
    auto *const lblYmd = NamedLabel(u"lblYmd"_s, u"学習記録(&D)："_s, this);
    lblYmd->setBuddy(txtYmd);
    auto *const lblWeekN = NamedLabel(u"lblWeekN"_s, u"週間(&K)"_s, this);
    lblWeekN->setBuddy(txtWeekN);
    span->addWidget(lblYmd);
    span->addWidget(txtYmd);
    span->addWidget(NamedLabel(u"lblUntil"_s, u"まで"_s, this));
    span->addWidget(txtWeekN);
    span->addWidget(lblWeekN);
    QPushButton *const cmdInc = AddButton(u"cmdInc"_s, u"＋1週(&W)"_s, &frmFile::cmdInc_Click);
    cmdInc->setToolTip(u"もう一週前まで表示します (Alt+W)"_s);
    span->addWidget(cmdInc);
    span->addStretch();
    auto *const totals = new QHBoxLayout;
    totals->addWidget(NamedLabel(u"lblSumTimeCaption"_s, u"総学習時間："_s, this));
    totals->addWidget(lblSumTime);
    totals->addSpacing(fontMetrics().averageCharWidth() * 2);
    totals->addWidget(NamedLabel(u"lblSumAnsCaption"_s, u"総回答数："_s, this));
    totals->addWidget(lblSumAns);
    totals->addStretch();
    QPushButton *const cmdFile = AddButton(u"cmdFile"_s, u"ファイルに出力(&F)"_s, &frmFile::cmdFile_Click);
    cmdFile->setToolTip(u"この学習記録を rec フォルダのファイルに書き出します (Alt+F)"_s);
    totals->addWidget(cmdFile);

    auto *const column = new QVBoxLayout;
    column->addLayout(span);
    column->addWidget(lstRecord, 1);
    column->addWidget(picHistory);
    column->addLayout(totals);
    return column;
}

/// By keys one goes through the window as one reads it: the files and what can be done with them, then the history.
void frmFile::SetTabOrder()
{
    QWidget *last = lstFile;
    for (const QString &name :
         {u"cmdSelect"_s, u"cmdEdit"_s, u"cmdRefresh"_s, u"cmdOpenFolder"_s, u"cmdConvFile"_s, u"cmdCancel"_s,
          u"cmdEnd"_s, u"txtYmd"_s, u"txtWeekN"_s, u"cmdInc"_s, u"lstRecord"_s, u"cmdFile"_s}) {
        auto *const next = findChild<QWidget *>(name);
        setTabOrder(last, next);
        last = next;
    }
}

QPushButton *frmFile::AddButton(const QString &name, const QString &caption, void (frmFile::*handler)())
{
    auto *const button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, handler);
    return button;
}

void frmFile::Form_Load()
{
    WriteTrace(u"■frmFile.Form_Load");
    setWindowTitle(u"ファイル選択 Ver"_s + VersionText());
}

FileChoice frmFile::Choose(const QString &textEditor)
{
    m_textEditor = textEditor;
    m_choice = FileChoice::Cancelled;
    exec();
    return m_choice;
}

void frmFile::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    Form_Activate();
}

/// A window that was left keeps nobody waiting for files that it would have gone on to check.
void frmFile::hideEvent(QHideEvent *event)
{
    m_files->DropChecks();
    QDialog::hideEvent(event);
}

void frmFile::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && (txtWeekN->hasFocus() || txtYmd->hasFocus()))
        event->accept();
    else
        QDialog::keyPressEvent(event);
}

void frmFile::Form_Activate()
{
    WriteTrace(u"■frmFile.Form_Activate");
    ListFiles();
    const QSignalBlocker noChangeOfWeeks(txtWeekN);
    const QSignalBlocker noChangeOfDate(txtYmd);
    txtYmd->setText(DateText(m_desktop.Now().date()));
    txtWeekN->setText(u"1"_s);
    ShowRecordWhenValid();
    activateWindow();
    lstFile->setFocus();
}

void frmFile::cmdSelect_Click()
{
    WriteTrace(u"■frmFile.cmdSelect_Click");
    QString name;
    if (!TakeSelection(false, &name))
        return;
    const QString path = m_folder.PathOf(name);
    StudyLines lines;
    QString message;
    int errorLine = 0;
    if (!ReadTextFile(path, MaxLineBytes, &lines, &message, &errorLine)) {
        const QString question = message + u"\r\nこのファイルを開きますか？"_s;
        if (m_msg.DispFrmMsg(this, question, MsgStyle::YesNo, u"notify.wav"_s) == MsgResult::Ok)
            OpenInEditor(m_desktop, m_textEditor, path, errorLine);
        return;
    }
    m_msg.PlayNamedSound(u"start.wav"_s);
    m_chosenPath = path;
    Leave(FileChoice::Chosen);
}

void frmFile::cmdEdit_Click()
{
    WriteTrace(u"■frmFile.cmdEdit_Click");
    QString name;
    if (TakeSelection(false, &name))
        OpenInEditor(m_desktop, m_textEditor, m_folder.PathOf(name), 1);
}

void frmFile::cmdRefresh_Click()
{
    WriteTrace(u"■frmFile.cmdRefresh_Click");
    ListFiles();
}

void frmFile::cmdOpenFolder_Click()
{
    WriteTrace(u"■frmFile.cmdOpenFolder_Click");
    if (!m_desktop.OpenWithShell(m_folder.Path(), u"c:\\"_s))
        m_desktop.ShowMessage(u"次のフォルダを開けません。\r\n  "_s + m_folder.Path());
}

void frmFile::cmdConvFile_Click()
{
    WriteTrace(u"■frmFile.cmdConvFile_Click");
    QString name;
    if (!TakeSelection(true, &name))
        return;
    const QString path = m_folder.PathOf(name);
    QString fault;
    if (!WritePrintableCopy(path, PrintableCopyPath(m_folder.Path(), path), &fault)) {
        m_msg.DispFrmMsg(this, fault, MsgStyle::Ok, u"notify.wav"_s);
        return;
    }
    m_msg.PlayNamedSound(u"start.wav"_s);
    ListFiles();
}

void frmFile::cmdCancel_Click()
{
    WriteTrace(u"■frmFile.cmdCancel_Click");
    Leave(FileChoice::Cancelled);
}

void frmFile::cmdEnd_Click()
{
    WriteTrace(u"■frmFile.cmdEnd_Click");
    m_database.Close();
    Leave(FileChoice::EndProgram);
}

void frmFile::txtWeekN_Change()
{
    WriteTrace(u"■frmFile.txtWeekN_Change");
    ShowRecordWhenValid();
}

void frmFile::txtYmd_Change()
{
    WriteTrace(u"■frmFile.txtYmd_Change");
    ShowRecordWhenValid();
}

void frmFile::cmdInc_Click()
{
    WriteTrace(u"■frmFile.cmdInc_Click");
    txtWeekN->setText(QString::number(qMin(MostWeeks, m_history.weeks + 1)));
}

void frmFile::cmdFile_Click()
{
    WriteTrace(u"■frmFile.cmdFile_Click");
    const QString path = JoinPath(m_reportFolder, ReportFileName(m_userName, m_desktop.Now().date(), m_history.weeks));
    QString reason;
    if (!ReplaceFile(path, ToCodePage932(ReportText(m_history)), &reason)) {
        m_msg.DispFrmMsg(this, u"学習記録をファイルに出力できません。\r\n  "_s + path + u"\r\n  "_s + reason,
                         MsgStyle::Ok, u"notify.wav"_s);
        return;
    }
    const QString question = u"学習記録をファイルに出力しました。\r\nこのファイルを開きますか？\r\n"_s;
    if (m_msg.DispFrmMsg(this, question, MsgStyle::YesNo, u"start.wav"_s) == MsgResult::Ok)
        OpenInEditor(m_desktop, m_textEditor, path, 1);
}

/// Shows the history that the two inputs name; while one of them is no number of weeks or no date, all stays as it is.
void frmFile::ShowRecordWhenValid()
{
    const int weeks = ReadWeeks(txtWeekN->text());
    if (weeks > 0 && DateFromText(txtYmd->text()).isValid())
        ShowRecord(weeks);
}

void frmFile::ShowRecord(int weeks)
{
    m_history = ReadHistory(m_database, DateFromText(txtYmd->text()), weeks, m_userName);
    m_records->setStringList(m_history.lines);
    lblSumTime->setText(m_history.totalTime);
    lblSumAns->setText(m_history.totalAnswers);
    picHistory->SetHistory(m_history);
}

/// Lists the folder and keeps the selection on the same file, where it is still there.
void frmFile::ListFiles()
{
    const QString selected = SelectedName();
    m_files->Refresh();
    const qsizetype row = m_folder.Names().indexOf(selected);
    lstFile->setCurrentIndex(m_files->index(row < 0 ? -1 : int(row)));
}

QString frmFile::SelectedName() const
{
    const QModelIndexList selected = lstFile->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? QString() : selected.front().data(Qt::DisplayRole).toString();
}

/// The selected file, or false after the refusal was shown.
bool frmFile::TakeSelection(bool isForPrinting, QString *name)
{
    *name = SelectedName();
    QString refusal;
    if (CheckSelection(*name, isForPrinting, &refusal))
        return true;
    m_msg.DispFrmMsg(this, refusal, MsgStyle::Ok, u"notify.wav"_s);
    return false;
}

void frmFile::Leave(FileChoice choice)
{
    m_choice = choice;
    hide();
}
