// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Construction of the file selection window: its controls and their tab order.
#include "base/modFile.h"
#include "files/StudyFileList.h"
#include "files/StudyFileModel.h"
#include "files/frmFile.h"
#include "history/HistoryPanel.h"
#include "history/RewardLabel.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/PaintedIcon.h"
#include "widgets/ScreenFit.h"

#include <QAction>
#include <QFileSystemWatcher>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QStandardPaths>
#include <QTabBar>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int MaxPathChars = 50;
constexpr int MaxNoteChars = 80;
constexpr double HalvesGapEms = 1.2;
constexpr int FileShare = 5; // of the window's width
constexpr int HistoryShare = 7;

} // namespace

frmFile::frmFile(SystemServices &services, StudyDatabase &database, frmMsg &msg, const SettingsFile &settings,
                 const QString &applicationFolder, const QString &userName, QWidget *owner)
    : QDialog(owner), m_services(services), m_database(database), m_msg(msg), m_settings(settings),
      m_reportFolder(JoinPath(applicationFolder, u"rec"_s)), m_folder(JoinPath(applicationFolder, u"txt"_s)),
      m_tallies(database, userName), m_userName(userName),
      m_marks(JoinPath(applicationFolder, u"ListMark.txt"_s), userName),
      m_stops(JoinPath(applicationFolder, u"ListPlace.txt"_s)),
      m_tableFolder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)),
      m_handOutFolder(m_tableFolder), m_editor{QString(), applicationFolder},
      m_files(new StudyFileModel(m_folder, m_tallies, this)), m_watcher(new QFileSystemWatcher(this)),
      m_refreshing(new QTimer(this)), m_tallying(new QTimer(this)), m_saving(new QTimer(this)),
      lstFile(new StudyFileList(this)), txtFilter(new QLineEdit(this)),
      lblEmpty(NamedLabel(u"lblEmpty"_s, QString(), this)),
      lblNote(new ElidedLabel(u"lblNote"_s, MaxNoteChars, this, Qt::ElideRight)), lblReward(new RewardLabel(this)),
      lblUserNameCaption(NamedLabel(u"lblUserNameCaption"_s, u"利用者："_s, this)),
      lblFolderCaption(NamedLabel(u"lblFolderCaption"_s, u"フォルダ："_s, this)),
      lblFolder(new ElidedLabel(u"lblFolder"_s, MaxPathChars, this)),
      lblUserName(new ElidedLabel(u"lblUserName"_s, MaxPathChars, this)), tabHalves(new QTabBar(this)),
      m_fileHalf(new QWidget(this)),
      m_history(new HistoryPanel(services, database, msg, m_reportFolder, m_editor, userName, m_tallies, this)),
      m_fileButtons(new QHBoxLayout), m_bottom(new QHBoxLayout)
{
    setObjectName(u"frmFile"_s);
    setAcceptDrops(true);
    AddFileButtons();
    AddBottomRow();
    auto *const content = new QWidget(this);
    content->setObjectName(u"content"_s);
    auto *const halves = new QHBoxLayout;
    halves->setSpacing(Ems(fontMetrics(), HalvesGapEms));
    halves->addWidget(FileHalf(), FileShare);
    halves->addWidget(m_history, HistoryShare);
    auto *const column = new QVBoxLayout(content);
    column->addWidget(TopBand(userName));
    column->addLayout(halves, 1);
    for (QLineEdit *const field : findChildren<QLineEdit *>())
        field->installEventFilter(this);
    SetUpTabOrder();
    FitToScreen(this, content, QSize(Ems(fontMetrics(), 80), 36 * fontMetrics().height()), m_bottom);
    column->setContentsMargins(0, 0, 0, 0); // the band reaches from edge to edge
    halves->setContentsMargins(WindowMargin, 0, WindowMargin, WindowMargin);
    ArrangeHalves();
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
    lstFile->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lstFile->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lstFile->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the delegate elides to fit the width
    lstFile->setMinimumSize(Ems(fontMetrics(), 20), 8 * fontMetrics().height());
    connect(lstFile, &QListView::doubleClicked, this, &frmFile::cmdSelect_Click);
    connect(lstFile->selectionModel(), &QItemSelectionModel::selectionChanged, this, &frmFile::ShowCommands);
    connect(m_files, &StudyFileModel::dataChanged, this, &frmFile::ShowCommands);
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
    m_saving->setObjectName(u"tmrSave"_s);
    m_saving->setSingleShot(true);
    connect(m_saving, &QTimer::timeout, this, &frmFile::SaveAfterShown);
}

/// What stands in the middle of a list without files.
void frmFile::SetUpEmptyList()
{
    cmdMakeFirst =
        AddButton(this, u"cmdMakeFirst"_s, u"表から作る…"_s,
                  u"表計算などの表（CSV，TSV）から学習ファイルを作ります (Ctrl+T)"_s, &frmFile::cmdTable_Click);
    lblEmpty->setForegroundRole(QPalette::PlaceholderText);
    lblEmpty->setAlignment(Qt::AlignCenter);
    lblEmpty->setWordWrap(true);
    DimPlaceholder(lblEmpty);
    auto *const column = new QVBoxLayout(lstFile->viewport());
    column->addStretch();
    column->addWidget(lblEmpty);
    column->addWidget(cmdMakeFirst, 0, Qt::AlignHCenter);
    column->addStretch();
}

QWidget *frmFile::FileHalf()
{
    SetUpList();
    SetUpEmptyList();
    SetUpFilter();
    SetUpOthersButton();
    auto *const above = new QHBoxLayout;
    above->addWidget(txtFilter, 1);
    above->addWidget(cmdOthers);
    auto *const column = new QVBoxLayout(m_fileHalf);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(above);
    column->addWidget(lstFile, 1);
    column->addLayout(m_fileButtons);
    return m_fileHalf;
}

void frmFile::SetUpFilter()
{
    txtFilter->setObjectName(u"txtFilter"_s);
    txtFilter->setAccessibleName(u"名前で絞り込み"_s);
    txtFilter->setPlaceholderText(u"名前で絞り込み"_s);
    txtFilter->setClearButtonEnabled(true);
    txtFilter->setToolTip(u"名前にこの言葉のあるファイルだけを表示します (Alt+N)"_s);
    DimPlaceholder(txtFilter);
    connect(txtFilter, &QLineEdit::textChanged, this, &frmFile::txtFilter_Change);
    connect(new QShortcut(Qt::ALT | Qt::Key_N, txtFilter), &QShortcut::activated, txtFilter,
            [this] { txtFilter->setFocus(Qt::ShortcutFocusReason); });
}

void frmFile::AddFileButtons()
{
    cmdSelect = AddButton(this, u"cmdSelect"_s, u"このファイルで学習(&S)"_s, u"選択したファイルで学習します (Enter)"_s,
                          &frmFile::cmdSelect_Click);
    cmdSelect->setDefault(true);
    m_edit.button = AddButton(this, u"cmdEdit"_s, u"編集(&E)"_s,
                              u"選択したファイルをテキストエディタで開きます (Alt+E)"_s, &frmFile::cmdEdit_Click);
    m_edit.button->setIcon(ButtonIcon(Icon::Edit));
    m_write.button =
        AddButton(this, u"cmdWrite"_s, u"書く(&B)"_s,
                  u"選択したファイルをこのソフトの中で直し，言葉を空欄にします (Alt+B)"_s, &frmFile::cmdWrite_Click);
    m_write.button->setIcon(ButtonIcon(Icon::Write));
    m_print.button = AddButton(this, u"cmdPrint"_s, u"印刷(&I)…"_s,
                               u"正解を下線にした用紙をブラウザで開きます (Ctrl+P)"_s, &frmFile::cmdPrint_Click);
    m_print.button->setIcon(ButtonIcon(Icon::Print));
    AddAction(u"actPrint"_s, m_print.button->text(), m_print.button->toolTip(), Qt::CTRL | Qt::Key_P,
              &frmFile::cmdPrint_Click);
    m_mend.button = AddButton(this, u"cmdMend"_s, u"ファイルを直す(&C)"_s,
                              u"文字コード，全角のかっこ，長い行などを直します (Alt+C)"_s, &frmFile::cmdMend_Click);
    m_mend.button->setAutoDefault(true); // Enter presses it where the focus goes after a refusal
    m_fileButtons->addWidget(cmdSelect, 1);
    for (Command *const command : {&m_edit, &m_write, &m_print, &m_mend}) {
        m_fileButtons->addWidget(command->button);
        const QString caption = command->button->text();
        command->inMenu = new QAction(caption, this);
        command->inMenu->setToolTip(command->button->toolTip());
        command->inMenu->setShortcut(QKeySequence::mnemonic(caption));
        connect(command->inMenu, &QAction::triggered, command->button, &QPushButton::click);
    }
}

/// A button with a menu of rarely used commands.
void frmFile::SetUpOthersButton()
{
    auto *const menu = new QMenu(this);
    menu->setObjectName(u"mnuOthers"_s);
    menu->setToolTipsVisible(true);
    for (const Command &command : {m_edit, m_write, m_print, m_mend})
        menu->addAction(command.inMenu);
    menu->addAction(AddAction(u"cmdNew"_s, u"新しい学習ファイル(&N)…"_s, u"新しい学習ファイルを書きます"_s,
                              Qt::CTRL | Qt::Key_N, &frmFile::cmdNew_Click));
    menu->addAction(AddAction(u"cmdNewPasted"_s, u"クリップボードから作る(&L)…"_s,
                              u"コピーした文章を貼り付けて，新しい学習ファイルを書きます"_s, Qt::CTRL | Qt::Key_V,
                              &frmFile::cmdNewPasted_Click));
    menu->addAction(AddAction(u"cmdTable"_s, u"表から作る(&T)…"_s,
                              u"表計算などの表（CSV，TSV）から学習ファイルを作ります"_s, Qt::CTRL | Qt::Key_T,
                              &frmFile::cmdTable_Click));
    menu->addAction(AddAction(u"cmdExport"_s, u"書き出す(&W)…"_s,
                              u"ほかのソフトのためのファイル（テキスト，Anki，CSV）を rec フォルダに作ります"_s,
                              Qt::CTRL | Qt::Key_E, &frmFile::cmdExport_Click));
    menu->addAction(AddAction(u"cmdHandOut"_s, u"配布用に書き出す(&H)…"_s,
                              u"選んだ学習ファイルを，図といっしょにほかのフォルダにコピーします"_s,
                              Qt::CTRL | Qt::SHIFT | Qt::Key_E, &frmFile::cmdHandOut_Click));
    menu->addAction(AddAction(u"cmdConvFile"_s, u"印刷用のコピーを作る(&P)"_s,
                              u"正解を空欄にした印刷用のファイルを作ります"_s, Qt::ALT | Qt::Key_P,
                              &frmFile::cmdConvFile_Click));
    menu->addAction(AddAction(u"cmdRecordTable"_s, u"学習記録をCSVに出力(&D)"_s,
                              u"表示中の学習記録を，表計算のための表として rec フォルダに書き出します"_s,
                              QKeySequence(), &frmFile::cmdRecordTable_Click));
    menu->addSeparator();
    menu->addAction(AddAction(u"cmdRefresh"_s, u"一覧を更新(&R)"_s, u"フォルダの中をもう一度調べます"_s,
                              Qt::ALT | Qt::Key_R, &frmFile::cmdRefresh_Click));
    menu->addAction(AddAction(u"cmdOpenFolder"_s, u"フォルダを開く(&O)"_s, u"学習ファイルのフォルダを開きます"_s,
                              Qt::ALT | Qt::Key_O, &frmFile::cmdOpenFolder_Click));
    menu->addSeparator();
    menu->addAction(AddAction(u"cmdIni"_s, u"表示の設定(&V)…"_s, u"文字の大きさや画面の色を変えます"_s, QKeySequence(),
                              &frmFile::cmdIni_Click));

    cmdOthers = NamedButton(u"cmdOthers"_s, u"その他(&M)"_s, u"ほかの操作を表示します (Alt+M)"_s, this);
    cmdOthers->setMenu(menu);
}

/// The tabs or what has been achieved, and whose files of which folder these are.
QWidget *frmFile::TopBand(const QString &userName)
{
    tabHalves->setObjectName(u"tabHalves"_s);
    tabHalves->setAccessibleName(u"ファイルと学習記録"_s);
    tabHalves->setDrawBase(false);
    tabHalves->setUsesScrollButtons(false);
    tabHalves->setElideMode(Qt::ElideNone);
    tabHalves->addTab(u"ファイル(&L)"_s);
    tabHalves->addTab(u"学習記録(&H)"_s);
    connect(tabHalves, &QTabBar::currentChanged, this, &frmFile::tabHalves_Click);
    lblUserName->SetText(userName);
    lblFolder->SetText(m_folder.Path());
    auto *const band = new QWidget(this);
    band->setObjectName(u"topBand"_s);
    band->setBackgroundRole(QPalette::Base);
    band->setAutoFillBackground(true);
    auto *const row = new QHBoxLayout(band);
    row->setContentsMargins(WindowMargin, WindowMargin / 2, WindowMargin, WindowMargin / 2);
    row->addWidget(tabHalves);
    row->addWidget(lblReward);
    row->addStretch(1);
    row->addWidget(lblUserNameCaption);
    row->addWidget(lblUserName);
    row->addSpacing(GroupGap(fontMetrics()));
    row->addWidget(lblFolderCaption);
    row->addWidget(lblFolder);
    return band;
}

void frmFile::AddBottomRow()
{
    m_bottom->setSpacing(ControlGap(fontMetrics()));
    m_bottom->addWidget(lblNote, 1);
    m_bottom->addStretch();
    cmdCancel = AddButton(this, u"cmdCancel"_s, u"キャンセル"_s, u"選ばずに学習画面に戻ります (Esc)"_s,
                          &frmFile::cmdCancel_Click);
    cmdEnd = AddButton(this, u"cmdEnd"_s, u"終了(&X)"_s, u"瞬記帳を終了します (Alt+X)"_s, &frmFile::cmdEnd_Click);
    m_bottom->addWidget(cmdCancel);
    m_bottom->addWidget(cmdEnd);
    // With a large font on a small screen, what stays in view gives away its margins rather than leaving the screen.
    for (QPushButton *const button : {cmdSelect, cmdCancel, cmdEnd})
        button->setMinimumWidth(fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() +
                                Ems(fontMetrics(), 0.6));
}

/// In reading order: the files and their commands, the history, and what leaves the window.
void frmFile::SetUpTabOrder()
{
    SetTabOrder({tabHalves, txtFilter, cmdOthers, lstFile, cmdMakeFirst, cmdSelect, m_edit.button, m_write.button,
                 m_print.button, m_mend.button});
    SetTabOrder({cmdCancel, cmdEnd});
    connect(m_history, &HistoryPanel::FileAsked, this, &frmFile::StudyTitle);
    m_history->SetTabOrderBetween(m_mend.button, cmdCancel);
}

bool frmFile::IsNarrow() const
{
    constexpr int besideEachOther = 64; // ems that both halves need
    return width() < Ems(fontMetrics(), besideEachOther);
}

/// Whether all buttons fit below the list without making it wider.
bool frmFile::HasRoomBelowList() const
{
    int neededPx = cmdSelect->minimumWidth();
    for (const Command &command : {m_edit, m_write, m_print, m_mend})
        neededPx += m_fileButtons->spacing() + command.button->sizeHint().width();
    const int halvesPx = width() - 2 * WindowMargin - Ems(fontMetrics(), HalvesGapEms);
    return neededPx <= halvesPx * FileShare / (FileShare + HistoryShare);
}

/// Whether the button that mends fits into the last row of a narrow window.
bool frmFile::HasRoomAtBottom() const
{
    int neededPx = 2 * WindowMargin + m_mend.button->sizeHint().width();
    for (const QPushButton *const button : {cmdSelect, cmdCancel, cmdEnd})
        neededPx += button->minimumWidth() + m_bottom->spacing();
    return neededPx <= width();
}

/// Shows both halves side by side, or one of them and tabs.
void frmFile::ArrangeHalves()
{
    const bool isNarrow = IsNarrow();
    tabHalves->setVisible(isNarrow);
    lblFolderCaption->setVisible(!isNarrow);
    lblFolder->setVisible(!isNarrow);
    constexpr int besideUser = 36; // ems that tabs, reward and user need
    constexpr int besideTabs = 29; // ems that tabs and reward need
    const bool hasUser = width() >= Ems(fontMetrics(), besideUser);
    lblUserNameCaption->setVisible(hasUser);
    lblUserName->setVisible(hasUser);
    lblReward->SetNarrow(isNarrow, width() < Ems(fontMetrics(), besideTabs) ? 1 : 2);
    m_history->SetNarrow(isNarrow);
    m_fileHalf->setVisible(!isNarrow || tabHalves->currentIndex() == 0);
    m_history->setVisible(!isNarrow || tabHalves->currentIndex() == 1);
    QBoxLayout *const place = isNarrow ? m_bottom : m_fileButtons; // a row less leaves room for the list
    if (place->indexOf(cmdSelect) < 0) {
        place->insertWidget(0, cmdSelect, isNarrow ? 0 : 1);
        cmdSelect->show(); // now, not from the event loop
        place->insertWidget(isNarrow ? 1 : -1, m_mend.button);
    }
    ShowCommands();
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
