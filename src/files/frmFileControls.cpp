// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Construction of the file selection window: its controls and their tab order.
#include "base/modFile.h"
#include "files/StudyFileList.h"
#include "files/StudyFileModel.h"
#include "files/frmFile.h"
#include "history/HistoryPanel.h"
#include "widgets/ElidedLabel.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"

#include <QAction>
#include <QFileSystemWatcher>
#include <QFormLayout>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStandardPaths>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int MaxPathChars = 30; // a long path must not push the buttons off the screen

} // namespace

frmFile::frmFile(SystemServices &services, StudyDatabase &database, frmMsg &msg, const SettingsFile &settings,
                 const QString &applicationFolder, const QString &userName, QWidget *owner)
    : QDialog(owner), m_services(services), m_database(database), m_msg(msg), m_settings(settings),
      m_reportFolder(JoinPath(applicationFolder, u"rec"_s)), m_folder(JoinPath(applicationFolder, u"txt"_s)),
      m_tallies(database, userName), m_userName(userName),
      m_marks(JoinPath(applicationFolder, u"ListMark.txt"_s), userName),
      m_stops(JoinPath(applicationFolder, u"ListPlace.txt"_s)),
      m_tableFolder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)),
      m_editor{QString(), applicationFolder}, m_files(new StudyFileModel(m_folder, m_tallies, this)),
      m_watcher(new QFileSystemWatcher(this)), m_refreshing(new QTimer(this)), m_tallying(new QTimer(this)),
      lstFile(new StudyFileList(this)), txtFilter(new QLineEdit(this)),
      lblFilter(LabelOf(txtFilter, u"lblFilter"_s, u"絞り込み(&N)："_s)),
      lblNote(NamedLabel(u"lblNote"_s, QString(), this)),
      lblFolder(new ElidedLabel(u"lblFolder"_s, MaxPathChars, this)),
      lblUserName(new ElidedLabel(u"lblUserName"_s, MaxPathChars, this)),
      m_history(new HistoryPanel(services, database, msg, m_reportFolder, m_editor, userName, this))
{
    setObjectName(u"frmFile"_s);
    setAcceptDrops(true);
    auto *const content = new QWidget(this);
    content->setObjectName(u"content"_s);
    auto *const halves = new QBoxLayout(QBoxLayout::LeftToRight, content);
    halves->addLayout(FileControls(userName), 1);
    halves->addSpacing(fontMetrics().averageCharWidth());
    halves->addWidget(m_history, 1);
    // Tab order follows reading order: the files and their commands, then the history.
    const auto control = [this](const QString &name) { return findChild<QWidget *>(name); };
    SetTabOrder({txtFilter, lstFile, control(u"cmdSelect"_s), control(u"cmdEdit"_s), cmdConvCode,
                 control(u"cmdPrint"_s), control(u"cmdOthers"_s), control(u"cmdCancel"_s), control(u"cmdEnd"_s)});
    m_history->SetTabOrderAfter(control(u"cmdEnd"_s));
    if (content->minimumSizeHint().width() > AvailableSize(this).width())
        halves->setDirection(QBoxLayout::TopToBottom);
    FitToScreen(this, content, QSize(fontMetrics().averageCharWidth() * 145, fontMetrics().lineSpacing() * 29));
    Form_Load();
}

frmFile::~frmFile() = default;

void frmFile::SetUpList()
{
    lstFile->setObjectName(u"lstFile"_s);
    lstFile->setAccessibleName(u"学習ファイル"_s);
    lstFile->setModel(m_files);
    lstFile->setItemDelegate(new StudyFileDelegate(lstFile));
    lstFile->setUniformItemSizes(true); // avoids measuring thousands of rows
    lstFile->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstFile->setSpacing(1);
    lstFile->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the delegate elides to fit the width
    lstFile->setMinimumSize(fontMetrics().averageCharWidth() * 30, fontMetrics().lineSpacing() * 8);
    connect(lstFile, &QListView::doubleClicked, this, &frmFile::cmdSelect_Click);
    connect(lstFile->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmFile::EnableCommands);
    connect(m_files, &StudyFileModel::dataChanged, this, &frmFile::EnableCommands);
    connect(lstFile, &StudyFileList::RowsShown, m_files, &StudyFileModel::CheckRows);

    // Combines a burst of changes, such as an archive being unpacked, into one refresh.
    m_refreshing->setObjectName(u"tmrRefresh"_s);
    m_refreshing->setSingleShot(true);
    m_refreshing->setInterval(200);
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, m_refreshing, qOverload<>(&QTimer::start));
    // The watcher does not report every write into an existing file. To edit one the user must leave this program, so
    // refresh on return.
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, m_refreshing, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive && isVisible())
            m_refreshing->start();
    });
    connect(m_refreshing, &QTimer::timeout, this, &frmFile::RefreshWhenShown);
    m_tallying->setObjectName(u"tmrTally"_s);
    connect(m_tallying, &QTimer::timeout, this, &frmFile::ReadTallies);
}

QLayout *frmFile::FileControls(const QString &userName)
{
    SetUpList();
    SetUpFilter();
    lblFolder->SetText(m_folder.Path());
    lblUserName->SetText(userName);
    lblNote->setWordWrap(true);

    auto *const form = new QFormLayout;
    form->addRow(NamedLabel(u"lblFolderCaption"_s, u"フォルダ："_s, this), lblFolder);
    form->addRow(NamedLabel(u"lblUserNameCaption"_s, u"利用者："_s, this), lblUserName);
    form->addRow(lblFilter, txtFilter);
    auto *const grid = new QGridLayout;
    grid->addLayout(form, 0, 0);
    grid->addWidget(lstFile, 1, 0);
    grid->addLayout(FileButtons(), 1, 1);
    grid->addWidget(lblNote, 2, 0, 1, 2);
    grid->addLayout(LeavingButtons(), 3, 0, 1, 2);
    grid->setColumnStretch(0, 1);
    grid->setRowStretch(1, 1);
    return grid;
}

void frmFile::SetUpFilter()
{
    txtFilter->setObjectName(u"txtFilter"_s);
    txtFilter->setClearButtonEnabled(true);
    txtFilter->setToolTip(u"名前にこの言葉のあるファイルだけを表示します (Alt+N)"_s);
    txtFilter->installEventFilter(this);
    connect(txtFilter, &QLineEdit::textChanged, this, &frmFile::txtFilter_Change);
}

QLayout *frmFile::FileButtons()
{
    QPushButton *const cmdSelect = AddButton(this, u"cmdSelect"_s, u"このファイルで学習(&S)"_s,
                                             u"選択したファイルで学習します (Enter)"_s, &frmFile::cmdSelect_Click);
    QPushButton *const cmdEdit =
        AddButton(this, u"cmdEdit"_s, u"編集(&E)"_s, u"選択したファイルをテキストエディタで開きます (Alt+E)"_s,
                  &frmFile::cmdEdit_Click);
    cmdConvCode = AddButton(this, u"cmdConvCode"_s, u"Shift_JISに変換(&C)"_s,
                            u"文字コードを変えて，開けるファイルにします (Alt+C)"_s, &frmFile::cmdConvCode_Click);
    QPushButton *const cmdPrint =
        AddButton(this, u"cmdPrint"_s, u"印刷(&I)…"_s, u"正解を下線にした用紙をブラウザで開きます (Ctrl+P)"_s,
                  &frmFile::cmdPrint_Click);
    addAction(AddAction(u"actPrint"_s, cmdPrint->text(), cmdPrint->toolTip(), Qt::CTRL | Qt::Key_P,
                        &frmFile::cmdPrint_Click));
    cmdSelect->setDefault(true);

    auto *const buttons = new QVBoxLayout;
    for (QPushButton *const button : {cmdSelect, cmdEdit, cmdConvCode, cmdPrint, OthersButton()})
        buttons->addWidget(button);
    buttons->addStretch();
    return buttons;
}

/// A button with a menu of rarely used commands.
QPushButton *frmFile::OthersButton()
{
    auto *const menu = new QMenu(this);
    menu->setObjectName(u"mnuOthers"_s);
    menu->setToolTipsVisible(true);
    menu->addAction(AddAction(u"cmdTable"_s, u"表から作る(&T)…"_s,
                              u"表計算などの表（CSV，TSV）から学習ファイルを作ります"_s, Qt::CTRL | Qt::Key_T,
                              &frmFile::cmdTable_Click));
    menu->addAction(AddAction(u"cmdExport"_s, u"書き出す(&W)…"_s,
                              u"ほかのソフトのためのファイル（テキスト，Anki，CSV）を rec フォルダに作ります"_s,
                              Qt::CTRL | Qt::Key_E, &frmFile::cmdExport_Click));
    menu->addAction(AddAction(u"cmdConvFile"_s, u"印刷用のコピーを作る(&P)"_s,
                              u"正解を空欄にした印刷用のファイルを作ります"_s, Qt::ALT | Qt::Key_P,
                              &frmFile::cmdConvFile_Click));
    menu->addSeparator();
    menu->addAction(AddAction(u"cmdRefresh"_s, u"一覧を更新(&R)"_s, u"フォルダの中をもう一度調べます"_s,
                              Qt::ALT | Qt::Key_R, &frmFile::cmdRefresh_Click));
    menu->addAction(AddAction(u"cmdOpenFolder"_s, u"フォルダを開く(&O)"_s, u"学習ファイルのフォルダを開きます"_s,
                              Qt::ALT | Qt::Key_O, &frmFile::cmdOpenFolder_Click));
    menu->addSeparator();
    menu->addAction(AddAction(u"cmdIni"_s, u"表示の設定(&V)…"_s, u"文字の大きさや画面の色を変えます"_s, QKeySequence(),
                              &frmFile::cmdIni_Click));

    QPushButton *const cmdOthers =
        NamedButton(u"cmdOthers"_s, u"その他(&M)"_s, u"ほかの操作を表示します (Alt+M)"_s, this);
    cmdOthers->setMenu(menu);
    return cmdOthers;
}

QLayout *frmFile::LeavingButtons()
{
    auto *const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(AddButton(this, u"cmdCancel"_s, u"キャンセル"_s, u"選ばずに学習画面に戻ります (Esc)"_s,
                                 &frmFile::cmdCancel_Click));
    buttons->addWidget(
        AddButton(this, u"cmdEnd"_s, u"終了(&X)"_s, u"瞬記帳を終了します (Alt+X)"_s, &frmFile::cmdEnd_Click));
    return buttons;
}

/// A menu entry whose shortcut also works while the menu is closed.
QAction *frmFile::AddAction(const QString &name, const QString &caption, const QString &toolTip,
                            const QKeySequence &keys, void (frmFile::*handler)())
{
    auto *const action = new QAction(caption, this);
    action->setObjectName(name);
    action->setToolTip(toolTip);
    action->setShortcut(keys);
    action->setAutoRepeat(false);
    connect(action, &QAction::triggered, this, handler);
    addAction(action);
    return action;
}
