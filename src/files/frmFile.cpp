#include "files/frmFile.h"

#include "base/modFile.h"
#include "base/modLog.h"
#include "base/modProduct.h"
#include "files/CodeConversion.h"
#include "files/HistoryPanel.h"
#include "files/StudyFileModel.h"
#include "files/modConvertCode.h"
#include "files/modPrintableCopy.h"
#include "settings/frmMsg.h"
#include "settings/modEditor.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"

#include <QGridLayout>
#include <QListView>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int WidestChars = 30; // a long path must not push the buttons off the screen

} // namespace

frmFile::frmFile(SystemServices &services, StudyDatabase &database, frmMsg &msg, const QString &applicationFolder,
                 const QString &userName, QWidget *owner)
    : QDialog(owner), m_services(services), m_database(database), m_msg(msg),
      m_folder(JoinPath(applicationFolder, u"txt"_s)), m_files(new StudyFileModel(m_folder, this)),
      lstFile(new QListView(this)), lblFolder(new ElidedLabel(u"lblFolder"_s, WidestChars, this)),
      lblUserName(new ElidedLabel(u"lblUserName"_s, WidestChars, this)),
      m_history(new HistoryPanel(services, database, msg, JoinPath(applicationFolder, u"rec"_s), userName, this))
{
    setObjectName(u"frmFile"_s);
    auto *const content = new QWidget(this);
    content->setObjectName(u"content"_s);
    auto *const halves = new QBoxLayout(QBoxLayout::LeftToRight, content);
    halves->addLayout(FileControls(userName), 1);
    halves->addSpacing(fontMetrics().averageCharWidth());
    halves->addWidget(m_history, 1);
    SetTabOrder();
    if (content->minimumSizeHint().width() > AvailableSize(this).width())
        halves->setDirection(QBoxLayout::TopToBottom);
    FitToScreen(this, content, QSize(fontMetrics().averageCharWidth() * 120, fontMetrics().lineSpacing() * 29));
    Form_Load();
}

frmFile::~frmFile() = default;

QLayout *frmFile::FileControls(const QString &userName)
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
    connect(lstFile->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmFile::EnableConvCode);
    connect(m_files, &StudyFileModel::dataChanged, this, &frmFile::EnableConvCode);

    lblFolder->SetText(m_folder.Path());
    lblUserName->SetText(userName);

    auto *const grid = new QGridLayout;
    grid->addWidget(NamedLabel(u"lblFolderCaption"_s, u"フォルダ："_s, this), 0, 0);
    grid->addWidget(lblFolder, 0, 1);
    grid->addWidget(NamedLabel(u"lblUserNameCaption"_s, u"利用者："_s, this), 1, 0);
    grid->addWidget(lblUserName, 1, 1);
    grid->addWidget(lstFile, 2, 0, 1, 2);
    grid->addLayout(FileButtons(), 2, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(2, 1);
    return grid;
}

QLayout *frmFile::FileButtons()
{
    QPushButton *const cmdSelect = AddButton(u"cmdSelect"_s, u"このファイルで学習(&S)"_s,
                                             u"選択したファイルで学習します (Enter)"_s, &frmFile::cmdSelect_Click);
    QPushButton *const cmdEdit =
        AddButton(u"cmdEdit"_s, u"編集(&E)"_s, u"選択したファイルをテキストエディタで開きます (Alt+E)"_s,
                  &frmFile::cmdEdit_Click);
    QPushButton *const cmdRefresh = AddButton(u"cmdRefresh"_s, u"一覧を更新(&R)"_s,
                                              u"フォルダの中をもう一度調べます (Alt+R)"_s, &frmFile::cmdRefresh_Click);
    QPushButton *const cmdOpenFolder =
        AddButton(u"cmdOpenFolder"_s, u"フォルダを開く(&O)"_s, u"学習ファイルのフォルダを開きます (Alt+O)"_s,
                  &frmFile::cmdOpenFolder_Click);
    QPushButton *const cmdConvFile =
        AddButton(u"cmdConvFile"_s, u"印刷用に変換(&P)"_s, u"正解を空欄にした印刷用のファイルを作ります (Alt+P)"_s,
                  &frmFile::cmdConvFile_Click);
    cmdConvCode = AddButton(u"cmdConvCode"_s, u"Shift_JISに変換(&C)"_s,
                            u"文字コードを変えて，開けるファイルにします (Alt+C)"_s, &frmFile::cmdConvCode_Click);
    QPushButton *const cmdCancel =
        AddButton(u"cmdCancel"_s, u"キャンセル"_s, u"選ばずに学習画面に戻ります (Esc)"_s, &frmFile::cmdCancel_Click);
    QPushButton *const cmdEnd =
        AddButton(u"cmdEnd"_s, u"終了(&X)"_s, u"瞬記帳を終了します (Alt+X)"_s, &frmFile::cmdEnd_Click);
    cmdSelect->setDefault(true);

    auto *const buttons = new QVBoxLayout;
    for (QPushButton *const button : {cmdSelect, cmdEdit, cmdRefresh, cmdOpenFolder, cmdConvFile, cmdConvCode})
        buttons->addWidget(button);
    buttons->addStretch();
    buttons->addWidget(cmdCancel);
    buttons->addWidget(cmdEnd);
    return buttons;
}

/// By keys one goes through the window as one reads it: the files and what can be done with them, then the history.
void frmFile::SetTabOrder()
{
    QWidget *last = lstFile;
    for (const QString &name : {u"cmdSelect"_s, u"cmdEdit"_s, u"cmdRefresh"_s, u"cmdOpenFolder"_s, u"cmdConvFile"_s,
                                u"cmdConvCode"_s, u"cmdCancel"_s, u"cmdEnd"_s}) {
        auto *const next = findChild<QWidget *>(name);
        setTabOrder(last, next);
        last = next;
    }
    m_history->SetTabOrderAfter(last);
}

QPushButton *frmFile::AddButton(const QString &name, const QString &caption, const QString &toolTip,
                                void (frmFile::*handler)())
{
    QPushButton *const button = NamedButton(name, caption, toolTip, this);
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

/// Checks that nobody will see any more must not delay what is done next.
void frmFile::hideEvent(QHideEvent *event)
{
    m_files->DropChecks();
    QDialog::hideEvent(event);
}

void frmFile::Form_Activate()
{
    WriteTrace(u"■frmFile.Form_Activate");
    ListFiles();
    m_history->ShowThisWeek(m_textEditor);
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
            OpenInEditor(m_services, m_textEditor, path, errorLine);
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
        OpenInEditor(m_services, m_textEditor, m_folder.PathOf(name), 1);
}

void frmFile::cmdRefresh_Click()
{
    WriteTrace(u"■frmFile.cmdRefresh_Click");
    ListFiles();
}

void frmFile::cmdOpenFolder_Click()
{
    WriteTrace(u"■frmFile.cmdOpenFolder_Click");
    if (!m_services.OpenWithShell(m_folder.Path(), u"c:\\"_s))
        m_services.ShowMessage(u"次のフォルダを開けません。\r\n  "_s + m_folder.Path());
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

void frmFile::cmdConvCode_Click()
{
    WriteTrace(u"■frmFile.cmdConvCode_Click");
    QString name;
    if (!TakeSelection(false, &name))
        return;
    CodeConversion(m_services, m_msg, this, m_textEditor, m_folder.PathOf(name)).Run();
    ListFiles();
    lstFile->setFocus(); // Enter then opens the file
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

/// Lists the folder and keeps the selection on the same file, where it is still there.
void frmFile::ListFiles()
{
    const QString selected = SelectedName();
    m_files->Refresh();
    const qsizetype row = m_folder.Names().indexOf(selected);
    lstFile->setCurrentIndex(m_files->index(row < 0 ? -1 : int(row)));
    EnableConvCode();
}

/// What is remarked on the selected file is known only once it was checked.
void frmFile::EnableConvCode()
{
    cmdConvCode->setEnabled(CanConvert(m_folder.Fault(SelectedName())));
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
