#include "files/frmFile.h"

#include "files/frmStudyFiles.h"
#include "platform/modLog.h"
#include "platform/modProduct.h"
#include "settings/frmMsg.h"
#include "settings/modEditor.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"

#include <QGridLayout>
#include <QLabel>
#include <QListView>
#include <QPushButton>

using namespace Qt::Literals::StringLiterals;

frmFile::frmFile(Desktop &desktop, StudyDatabase &database, frmMsg &msg, const QString &studyFolder,
                 const QString &userName, QWidget *owner)
    : QDialog(owner), m_desktop(desktop), m_database(database), m_msg(msg), m_folder(studyFolder), m_userName(userName),
      m_files(new StudyFileModel(m_folder, this)), lstFile(new QListView(this)), lblFolder(new QLabel(this)),
      lblUserName(new QLabel(this))
{
    setObjectName(u"frmFile"_s);
    setWindowTitle(u"ファイル選択 Ver"_s + VersionText());
    AddFileControls();
}

frmFile::~frmFile() = default;

void frmFile::AddFileControls()
{
    lstFile->setObjectName(u"lstFile"_s);
    lstFile->setModel(m_files);
    lstFile->setItemDelegate(new StudyFileDelegate(lstFile));
    lstFile->setUniformItemSizes(true); // measuring every row would check every file
    lstFile->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstFile->setMinimumSize(360, 320);
    connect(lstFile, &QListView::doubleClicked, this, &frmFile::cmdSelect_Click);

    lblFolder->setObjectName(u"lblFolder"_s);
    lblFolder->setTextFormat(Qt::PlainText);
    lblFolder->setText(m_folder.Path());
    lblUserName->setObjectName(u"lblUserName"_s);
    lblUserName->setTextFormat(Qt::PlainText);
    lblUserName->setText(m_userName);

    QPushButton *const cmdSelect = AddButton(u"cmdSelect"_s, u"このファイルで学習(&S)"_s, &frmFile::cmdSelect_Click);
    QPushButton *const cmdEdit = AddButton(u"cmdEdit"_s, u"編集(&E)"_s, &frmFile::cmdEdit_Click);
    QPushButton *const cmdRefresh = AddButton(u"cmdRefresh"_s, u"一覧を更新(&R)"_s, &frmFile::cmdRefresh_Click);
    QPushButton *const cmdOpenFolder =
        AddButton(u"cmdOpenFolder"_s, u"フォルダを開く(&O)"_s, &frmFile::cmdOpenFolder_Click);
    QPushButton *const cmdCancel = AddButton(u"cmdCancel"_s, u"キャンセル"_s, &frmFile::cmdCancel_Click);
    QPushButton *const cmdEnd = AddButton(u"cmdEnd"_s, u"終了(&X)"_s, &frmFile::cmdEnd_Click);
    cmdSelect->setDefault(true);

    auto *const buttons = new QVBoxLayout;
    for (QPushButton *const button : {cmdSelect, cmdEdit, cmdRefresh, cmdOpenFolder})
        buttons->addWidget(button);
    buttons->addStretch();
    buttons->addWidget(cmdCancel);
    buttons->addWidget(cmdEnd);

    auto *const grid = new QGridLayout(this);
    grid->addWidget(new QLabel(u"フォルダ："_s, this), 0, 0);
    grid->addWidget(lblFolder, 0, 1);
    grid->addWidget(new QLabel(u"利用者："_s, this), 1, 0);
    grid->addWidget(lblUserName, 1, 1);
    grid->addWidget(lstFile, 2, 0, 1, 2);
    grid->addLayout(buttons, 2, 2);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(2, 1);
}

QPushButton *frmFile::AddButton(const QString &name, const QString &caption, void (frmFile::*handler)())
{
    auto *const button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, handler);
    return button;
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

void frmFile::Form_Activate()
{
    WriteTrace(u"■frmFile.Form_Activate");
    ListFiles();
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
