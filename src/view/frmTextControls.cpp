// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Construction of the study window: its controls, the keyboard shortcuts for what otherwise needs a mouse, its
// settings, its position and size.
#include "base/modProduct.h"
#include "files/frmFile.h"
#include "page/PageFrame.h"
#include "page/picText.h"
#include "platform/modWindowMessage.h"
#include "settings/modZoom.h"
#include "view/StudyBar.h"
#include "view/StudyStateBar.h"
#include "view/frmText.h"
#include "widgets/BarButton.h"
#include "widgets/FailureTeller.h"
#include "widgets/FocusScrollBar.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/ScreenFit.h"

#include <QAction>
#include <QFileSystemWatcher>
#include <QMenu>
#include <QRandomGenerator>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <limits>
#include <tuple>
#include <type_traits>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int CellsPerKey = 8;

} // namespace

frmText::frmText(SystemServices &services, StudyDatabase &database, const RunLog &log, frmMsg &msg,
                 InputGuard &inputGuard, const StudyContext &context)
    : m_services(services), m_database(database), m_log(log), m_msg(msg), m_inputGuard(inputGuard), m_context(context),
      m_settingsFile(context.settingsPath), m_defaults(DefaultSettings()), m_settings(m_defaults),
      m_session(services, database, context.applicationFolder, context.userName, context.interimSeconds),
      m_page(m_session.Page()), m_watcher(new QFileSystemWatcher(this)), picText(new PicText(m_page, this)),
      VScroll(new FocusScrollBar(Qt::Vertical, this)), HScroll(new FocusScrollBar(Qt::Horizontal, this)),
      m_pageFrame(new PageFrame(m_page.Text(), picText, VScroll, HScroll, this)), m_bar(new StudyBar(this)),
      m_stateBar(new StudyStateBar(this)), Timer1(new QTimer(this)), m_keeping(new QTimer(this))
{
    setObjectName(u"frmText"_s);
    AddControls();
    LayOut();
    Connect();
    AddShortcuts();
    AddCommandKeys();
    new FailureTeller(
        m_services, m_msg, [this] { return WindowInUse(); }, this);
    Form_Load();
}

void frmText::AddControls()
{
    picText->setObjectName(u"picText"_s);
    VScroll->setObjectName(u"VScroll"_s);
    VScroll->setAccessibleName(u"本文の位置"_s);
    HScroll->setObjectName(u"HScroll"_s);
    HScroll->setAccessibleName(u"本文の横の位置"_s);
    m_keeping->setObjectName(u"tmrKeep"_s);
    m_keeping->setSingleShot(true);
    m_keeping->setInterval(1000);
    Timer1->setObjectName(u"Timer1"_s);
    Timer1->setInterval(600); // often enough to see every second, so that no multiple of ten is missed
}

void frmText::LayOut()
{
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(m_pageFrame, 1);
    column->addWidget(m_stateBar);

    // In reading order: the bar, the page with its scroll bars, then the row below.
    SetTabOrder({m_bar->MenuButton(), picText, VScroll, HScroll});
}

void frmText::Connect()
{
    connect(VScroll, &QScrollBar::valueChanged, this, &frmText::VScroll_Change);
    connect(HScroll, &QScrollBar::valueChanged, this, &frmText::HScroll_Change);
    connect(m_bar->cmdFile, &QPushButton::clicked, this, &frmText::cmdFile_Click);
    connect(m_bar->cmdReRead, &QPushButton::clicked, this, &frmText::cmdReRead_Click);
    connect(m_bar->cmdEdit, &QPushButton::clicked, this, &frmText::cmdEdit_Click);
    connect(m_bar->cmdSearch, &QPushButton::clicked, this, &frmText::cmdSearch_Click);
    connect(m_bar->chkOnlyHard, &QCheckBox::clicked, this, &frmText::chkOnlyHard_Click);
    connect(m_bar->cmdHard, &QPushButton::clicked, this, &frmText::cmdHard_Click);
    connect(m_bar->chkSpeak, &QCheckBox::clicked, this, &frmText::chkSpeak_Click);
    connect(m_bar->cmdIni, &QPushButton::clicked, this, &frmText::cmdIni_Click);
    connect(m_bar->cmdDispHowToUse, &QPushButton::clicked, this, &frmText::cmdDispHowToUse_Click);
    // An entry leaves the focus in the page as a click on a button does.
    connect(m_bar->MenuButton()->menu(), &QMenu::triggered, this, [this] {
        if (focusWidget() == m_bar->MenuButton())
            picText->setFocus();
    });
    connect(m_keeping, &QTimer::timeout, this, &frmText::KeepMarks);
    connect(picText, &PicText::KeyDown, this, &frmText::picText_KeyDown);
    connect(picText, &PicText::MouseDown, this, &frmText::picText_MouseDown);
    connect(picText, &PicText::MouseMove, this, &frmText::picText_MouseMove);
    connect(picText, &PicText::OLEDragDrop, this, &frmText::picText_OLEDragDrop);
    connect(picText, &PicText::LayoutChanged, this, [this] { Apply(m_page.SetLayout(picText->Measured())); });
    connect(picText, &PicText::FocusLost, this, [this] { Apply(m_page.HideHint()); });
    connect(picText, &PicText::WheelTurned, this, [this](int steps) { Apply(m_page.MoveBySteps(steps)); });
    connect(picText, &PicText::WheelTurnedSideways, this, [this](int cells) { Apply(m_page.MoveByCells(cells)); });
    connect(picText, &PicText::ColoursChanged, this, &frmText::ShowColours);
    connect(picText, &PicText::ZoomTurned, this, &frmText::ChangeZoom);
    connect(m_stateBar, &StudyStateBar::ZoomClicked, this, &frmText::ChangeZoom);
    connect(m_stateBar, &StudyStateBar::LineChosen, this, [this](int line) { Apply(m_page.MoveToLine(line)); });
    connect(m_stateBar, &StudyStateBar::NoticeChosen, this, &frmText::lblNotice_Click);
    connect(m_stateBar, &StudyStateBar::BarsWanted, this, &frmText::actPageOnly_Click);
    connect(m_stateBar, &StudyStateBar::FocusFreed, picText, qOverload<>(&QWidget::setFocus));
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, [this] {
        m_canMend = false; // as far as known
        TellFileChange();
    });
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, this, &frmText::TellFileChange);
    connect(Timer1, &QTimer::timeout, this, &frmText::Timer1_Timer);
}

/// What a key does: ends the hint, performs a command and applies what that changed on the page, if it returns it.
template <typename Action>
auto frmText::Command(Action action)
{
    return [this, action] {
        Apply(m_page.HideHint());
        if constexpr (std::is_void_v<decltype(action())>)
            action();
        else
            Apply(action());
    };
}

/// Adds shortcuts for what otherwise needs a mouse. They belong to the window, because the text area ignores most keys.
void frmText::AddShortcuts()
{
    const auto add = [this](const QKeySequence &keys, auto action) {
        auto *const shortcut = new QShortcut(keys, this);
        connect(shortcut, &QShortcut::activated, this, Command(action));
        return shortcut;
    };
    // A held key keeps moving but clicks only once.
    const auto addClick = [&add](const QKeySequence &keys, auto action) { add(keys, action)->setAutoRepeat(false); };
    addClick(Qt::Key_F1, [this] { cmdDispHowToUse_Click(); });
    add(QKeySequence::Find, [this] { m_bar->cmdSearch->click(); });
    add(Qt::Key_F3, [this] { GoOnSearching(false); });
    add(Qt::SHIFT | Qt::Key_F3, [this] { GoOnSearching(true); });
    add(Qt::CTRL | Qt::Key_Right, [this] { return m_page.GoToTarget(false, m_bar->chkSpeak->isChecked()); });
    add(Qt::CTRL | Qt::Key_Left, [this] { return m_page.GoToTarget(true, m_bar->chkSpeak->isChecked()); });
    addClick(Qt::CTRL | Qt::Key_Space, [this] { return m_page.ClickCurrent(); });
    addClick(Qt::ALT | Qt::Key_C, [this] { MendFile(); });
    addClick(Qt::CTRL | Qt::Key_H, [this] { return m_page.HideAll(); });
    addClick(Qt::CTRL | Qt::SHIFT | Qt::Key_R, [this] { return m_session.Resume(); });
    addClick(QKeySequence::Undo, [this] { return m_page.Undo(); });
    addClick(Qt::CTRL | Qt::Key_M, [this] { return m_page.ToggleHard(m_page.BlankToMark()); });
    addClick(Qt::CTRL | Qt::SHIFT | Qt::Key_M, [this] { m_bar->chkOnlyHard->click(); });
    addClick(Qt::CTRL | Qt::SHIFT | Qt::Key_Space, [this] { return m_page.ToggleWholeLine(); });
    auto *const hint = new QShortcut(Qt::CTRL | Qt::Key_I, this); // does not end the hint, but lets it grow
    hint->setAutoRepeat(false);
    connect(hint, &QShortcut::activated, this, [this] { Apply(m_page.ShowHint()); });
    addClick(Qt::CTRL | Qt::Key_L, [this] { return m_page.ClickLineNumber(m_page.Current().line); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Down, [this] { return m_page.MoveLineMark(1); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Up, [this] { return m_page.MoveLineMark(-1); });
    add(Qt::CTRL | Qt::Key_Down, [this] { return m_page.MoveBySteps(1); });
    add(Qt::CTRL | Qt::Key_Up, [this] { return m_page.MoveBySteps(-1); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Right, [this] { return m_page.MoveByCells(CellsPerKey); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Left, [this] { return m_page.MoveByCells(-CellsPerKey); });
    add(Qt::CTRL | Qt::Key_PageDown, [this] { return m_page.MoveToNextPage(); });
    add(Qt::CTRL | Qt::Key_PageUp, [this] { return m_page.MoveToPreviousPage(); });
    add(Qt::CTRL | Qt::Key_Home, [this] { return m_page.MoveToLine(1); });
    add(Qt::CTRL | Qt::Key_End, [this] { return m_page.MoveToEnd(); });
    addClick(Qt::CTRL | Qt::Key_G, [this] { AskForLine(); });
    addClick(Qt::CTRL | Qt::SHIFT | Qt::Key_G, [this] { return m_page.MoveToRandomPage(QRandomGenerator::global()); });
}

/// Adds the keys of what the menu of the bar always has.
void frmText::AddCommandKeys()
{
    const auto add = [this](QAction *entry, const QList<QKeySequence> &keys, auto action) {
        entry->setShortcuts(keys);
        connect(entry, &QAction::triggered, this, Command(action));
    };
    add(m_bar->actPageOnly, {Qt::CTRL | Qt::Key_F11}, [this] { actPageOnly_Click(); });
    add(m_bar->actWrite, {Qt::CTRL | Qt::Key_B}, [this] { actWrite_Click(); });
    add(m_bar->actPrint, {QKeySequence::Print}, [this] { PrintFile(); });
    add(m_bar->actExport, {Qt::CTRL | Qt::Key_E}, [this] { ExportFile(); });
    // The key of + without Shift too, on English and on Japanese keyboards.
    add(m_bar->actLarger,
        {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal, Qt::CTRL | Qt::Key_Semicolon, Qt::ALT | Qt::Key_Plus},
        [this] { ChangeZoom(1); });
    add(m_bar->actSmaller, {Qt::CTRL | Qt::Key_Minus, Qt::ALT | Qt::Key_Minus}, [this] { ChangeZoom(-1); });
    add(m_bar->actUsualSize, {Qt::CTRL | Qt::Key_0}, [this] { SetZoom(ZoomSteps.front()); });
    for (QAction *const entry :
         {m_bar->actPageOnly, m_bar->actWrite, m_bar->actPrint, m_bar->actExport, m_bar->actUsualSize})
        entry->setAutoRepeat(false);
}

void frmText::Form_Load()
{
    WriteTrace(u"■frmText.Form_Load()");
    setWindowTitle(ProductName() + u" Ver"_s + VersionText() + u" ["_s + m_context.userName + u']');

    // The text size determines the window's size, and that the largest left edge.
    QRect area = screen()->availableGeometry();
    QStringList repairs; // shown once the window is
    m_settings = m_settingsFile.Read(m_defaults, UpperBounds(std::numeric_limits<int>::max()), &repairs);
    KeepMinimumSize();
    m_zoom = m_settings.zoom > 0 ? m_settings.zoom : ZoomForDesktopFont(fontInfo().pointSizeF());
    ApplySettings();
    const QSize remembered = m_settings.formSize;
    resize(
        (remembered.isEmpty() ? sizeHint() : remembered.expandedTo(minimumSizeHint())).boundedTo(AvailableSize(this)));
    m_upper = UpperBounds(LargestLeft(width()));
    if (!m_settingsFile.Exists())
        m_settings.FormLeft = area.left() + (area.width() - width()) / 2;
    else if (m_settings.FormLeft > m_upper.FormLeft)
        m_settings.FormLeft = m_defaults.FormLeft;
    area = ScreenAt(m_settings.FormLeft)->availableGeometry();
    move(m_settings.FormLeft, area.top() + (area.height() - height()) / 3);
    if (m_settings.isFormMaximized)
        setWindowState(windowState() | Qt::WindowMaximized);

    m_bar->EnableFileControls(false);
    // Nobody sends this message any more, but it is still registered, as it always was.
    m_wheelMessage = RegisterMessageName(u"MSWHEEL_ROLLMSG"_s);
}

// Not every window system reports activation, so the first time is when the window is shown.
void frmText::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_stage != Stage::Created)
        return;
    m_stage = Stage::Shown;
    // Another screen may have a different resolution.
    connect(windowHandle(), &QWindow::screenChanged, this, &frmText::ApplySettings);
    activateWindow();
    picText->setFocus();
    QTimer::singleShot(0, this, [this] {
        Form_Activate();
        if (!m_page.IsFileOpen())
            cmdFile_Click();
    });
}

void frmText::Form_Resize()
{
    WriteTrace(u"■frmText.Form_Resize");
    // Nothing else: the frame of the page places what is in it.
}

void frmText::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Form_Resize();
}

bool frmText::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::FontChange) {
        KeepMinimumSize();
    } else if (event->type() == QEvent::ApplicationPaletteChange) {
        picText->FollowDesktop();
        ShowColours();
    }
    return isHandled;
}

/// Keeps the window large enough for its bars and some rows.
void frmText::KeepMinimumSize()
{
    setMinimumSize(LeastStudySize(fontMetrics()).boundedTo(AvailableSize(this)));
}

/// Leaves the window to the page and a low row below it, or brings the bars back. Not kept for the next start, whose
/// user might not know how.
void frmText::SetPageOnly(bool isPageOnly)
{
    m_bar->setVisible(!isPageOnly);
    m_pageFrame->HideBars(isPageOnly);
    m_stateBar->SetPageOnly(isPageOnly);
    picText->setFocus();
}

void frmText::ReadSettings()
{
    if (!m_settingsFile.Exists()) {
        const int left = LeftEdge();
        m_settings = m_defaults;
        m_settings.FormLeft = left;
        return;
    }
    QStringList messages;
    m_settings = m_settingsFile.Read(m_defaults, m_upper, &messages);
    if (m_stage != Stage::Shown)
        return; // already reported
    m_stage = Stage::RepairsTold;
    for (const QString &message : messages)
        m_services.ShowMessage(message);
}

void frmText::ApplySettings()
{
    picText->SetAppearance(m_settings.FontSize, m_settings.LineSpace, m_settings.bolDispLineNum, m_settings.isWrapping,
                           m_zoom);
    m_pageFrame->Adapt();
    Apply(m_page.SetLayout(picText->Measured()));
    picText->SetPageColour(m_settings.pageColour);
    m_stateBar->ShowZoom(m_zoom);
    ShowColours();
}

/// Widens the window, at most to the screen, if a line of maximum length needs more room than before and does not fit.
/// @param neededBeforePx  what it needed then
void frmText::WidenToText(int neededBeforePx)
{
    const QRect area = screen()->availableGeometry();
    const int needed = m_pageFrame->sizeHint().width();
    const int wanted = qMin(needed, AvailableSize(this).width());
    if (isMaximized() || isFullScreen() || needed <= neededBeforePx || wanted <= width())
        return;
    const int frame = frameGeometry().width() - width();
    resize(wanted, height());
    move(qMax(area.left(), qMin(x(), area.right() + 1 - wanted - frame)), y());
}

/// The largest left edge, in pixels, at which a window of the given width is still on one of the screens. Relative to
/// all of them including panels, or the window would move by the width of a panel at each start. No bound where windows
/// have no place: what another desktop has saved is kept.
int frmText::LargestLeft(int widthPx) const
{
    return m_services.HasWindowPlaces() ? qMax(0, screen()->virtualGeometry().right() + 1 - widthPx)
                                        : std::numeric_limits<int>::max();
}

/// The screen on which a window with the given left edge opens: its present one where that reaches so far, else another
/// that does, however high or low it is beside that.
const QScreen *frmText::ScreenAt(int leftPx) const
{
    const auto reaches = [leftPx](const QScreen *candidate) {
        const QRect area = candidate->geometry();
        return area.left() <= leftPx && leftPx <= area.right();
    };
    const QList<QScreen *> all = screen()->virtualSiblings();
    const auto found = reaches(screen()) ? all.cend() : std::find_if(all.cbegin(), all.cend(), reaches);
    return found == all.cend() ? screen() : *found;
}

/// The left edge of the window, in pixels; the saved one where windows have no place.
int frmText::LeftEdge() const
{
    return m_services.HasWindowPlaces() ? x() : m_settings.FormLeft;
}

/// Saves the left edge of a window that is not maximised. One beyond the allowed bound is clamped, or the next start
/// would complain about a value that the program itself has written. That the window opens elsewhere the next time is
/// worth no message on the way to another file or out of the program.
void frmText::SaveFormPos()
{
    if (!isMaximized() && !isFullScreen())
        std::ignore = m_settingsFile.WriteFileIniFormPos(qMin(LeftEdge(), LargestLeft(width())));
}

/// Saves the size of the window, that when it is not maximised, and the zoom. Writes to disk what SaveFormPos wrote.
void frmText::SaveFormSize()
{
    const bool isAsUsual = !isMaximized() && !isFullScreen();
    std::ignore = m_settingsFile.WriteFormSize(isAsUsual ? size() : normalGeometry().size(), isMaximized());
    if (m_isZoomChosen)
        std::ignore = m_settingsFile.WriteZoom(m_zoom);
}

/// Moves the file selection window over the study window: centred, with its top at the button that opens it.
void frmText::MoveFileWindow()
{
    const QRect area = screen()->availableGeometry();
    const int left = x() + (width() - m_frmFile->width()) / 2;
    const int top = m_bar->cmdFile->mapToGlobal(QPoint(0, 0)).y();
    m_frmFile->move(qMax(area.left(), qMin(left, area.right() + 1 - m_frmFile->width())),
                    qMax(area.top(), qMin(top, area.bottom() + 1 - m_frmFile->height())));
}
