#include "view/frmText.h"

#include "base/modDateText.h"
#include "base/modFile.h"
#include "base/modProduct.h"
#include "files/frmFile.h"
#include "platform/modWindowMessage.h"
#include "search/frmSearch.h"
#include "settings/frmIni.h"
#include "settings/frmMsg.h"
#include "settings/modEditor.h"
#include "settings/modSpeech.h"
#include "store/modDB_SQLite.h"
#include "text/modCheckText.h"
#include "text/modPictureName.h"
#include "text/modReadText.h"
#include "view/frmPicture.h"
#include "view/modSpots.h"
#include "view/modStudyClock.h"
#include "view/modWordAt.h"
#include "view/picText.h"
#include "widgets/FlowLayout.h"
#include "widgets/InputGuard.h"
#include "widgets/ScreenFit.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QTimer>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int TimerMs = 200; // no multiple of ten seconds may be missed

void KeepPlaceWhenHidden(QWidget *widget)
{
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
}

} // namespace

frmText::frmText(Desktop &desktop, StudyDatabase &database, const RunLog &log, frmMsg &msg, const StudyPlace &place)
    : m_desktop(desktop), m_database(database), m_log(log), m_msg(msg), m_place(place),
      m_settingsFile(place.settingsPath), m_defaults(DefaultSettings()), m_settings(m_defaults),
      picText(new PicText(this)), VScroll(new QScrollBar(Qt::Vertical, this)),
      cmdFile(AddButton(u"cmdFile"_s, u"ファイル選択(&O)"_s, &frmText::cmdFile_Click)),
      cmdReRead(AddButton(u"cmdReRead"_s, u"再読込(&R)"_s, &frmText::cmdReRead_Click)),
      cmdEdit(AddButton(u"cmdEdit"_s, u"編集(&E)"_s, &frmText::cmdEdit_Click)),
      cmdIni(AddButton(u"cmdIni"_s, u"設定(&I)"_s, &frmText::cmdIni_Click)),
      cmdDispHowToUse(AddButton(u"cmdDispHowToUse"_s, u"使い方(&H)"_s, &frmText::cmdDispHowToUse_Click)),
      cmdSearch(AddButton(u"cmdSearch"_s, u"検索(&F)"_s, &frmText::cmdSearch_Click)),
      chkSpeak(new QCheckBox(u"読み上げ(&S)"_s, this)), lblNum(AddLabel(u"lblNum"_s)), prgShown(new QProgressBar(this)),
      lblShown(AddLabel(u"lblShown"_s)), lblPlace(AddLabel(u"lblPlace"_s)), lblMinN(AddLabel(u"lblMinN"_s)),
      lblMin(AddLabel(u"lblMin"_s)), lblSecN(AddLabel(u"lblSecN"_s)), lblSec(AddLabel(u"lblSec"_s)),
      lblKeyword(AddLabel(u"lblKeyword"_s)), Timer1(new QTimer(this))
{
    setObjectName(u"frmText"_s);
    AddControls();
    Form_Load();
}

frmText::~frmText() = default;

void frmText::AddControls()
{
    picText->setObjectName(u"picText"_s);
    VScroll->setObjectName(u"VScroll"_s);
    VScroll->setAccessibleName(u"本文の位置"_s);
    chkSpeak->setObjectName(u"chkSpeak"_s);
    chkSpeak->setToolTip(u"クリックした言葉を読み上げます (Alt+S)"_s);
    Timer1->setObjectName(u"Timer1"_s);
    chkSpeak->setFocusPolicy(Qt::TabFocus);
    VScroll->setFocusPolicy(Qt::TabFocus);
    KeepPlaceWhenHidden(VScroll);
    cmdFile->setToolTip(u"別の学習ファイルを選びます (Alt+O)"_s);
    cmdReRead->setToolTip(u"編集した学習ファイルを読み直します (Alt+R)"_s);
    cmdEdit->setToolTip(u"学習ファイルをテキストエディタで開きます (Alt+E)"_s);
    cmdIni->setToolTip(u"文字の大きさなどを変えます (Alt+I)"_s);
    cmdDispHowToUse->setToolTip(u"使い方の説明を開きます (F1)"_s);
    cmdSearch->setToolTip(u"キーワードや本文の言葉を探します (Ctrl+F)"_s);

    auto *const bar = new FlowLayout(6);
    for (QPushButton *const button : {cmdFile, cmdReRead, cmdEdit, cmdIni, cmdDispHowToUse, cmdSearch})
        bar->addWidget(button);
    bar->addWidget(chkSpeak);

    auto *const grid = new QGridLayout(this);
    grid->setContentsMargins(8, 8, 8, 6);
    grid->setVerticalSpacing(6);
    grid->addLayout(bar, 0, 0, 1, 2);
    grid->addWidget(picText, 1, 0);
    grid->addWidget(VScroll, 1, 1);
    grid->addLayout(StateControls(), 2, 0, 1, 2);
    grid->setRowStretch(1, 1);
    grid->setColumnStretch(0, 1);
    grid->setHorizontalSpacing(0);

    VScroll->setRange(1, 1);
    connect(VScroll, &QScrollBar::valueChanged, this, &frmText::VScroll_Change);
    connect(chkSpeak, &QCheckBox::clicked, this, &frmText::chkSpeak_Click);
    connect(picText, &PicText::KeyDown, this, &frmText::picText_KeyDown);
    connect(picText, &PicText::MouseDown, this, &frmText::picText_MouseDown);
    connect(picText, &PicText::MouseMove, this, &frmText::picText_MouseMove);
    connect(picText, &PicText::OLEDragDrop, this, &frmText::picText_OLEDragDrop);
    connect(picText, &PicText::RowsChanged, this, &frmText::SetUpScrollBar);
    connect(picText, &PicText::WheelTurned, this, [this](int lines) { VScroll->setValue(VScroll->value() + lines); });
    AddShortcuts();
    connect(Timer1, &QTimer::timeout, this, &frmText::Timer1_Timer);
    Timer1->setInterval(TimerMs);
}

/// Keys for what else takes a mouse. They belong to the window: in the text area itself all keys but a few do nothing.
void frmText::AddShortcuts()
{
    const auto add = [this](const QKeySequence &keys, const std::function<void()> &action) {
        auto *const shortcut = new QShortcut(keys, this);
        connect(shortcut, &QShortcut::activated, this, action);
        return shortcut;
    };
    // A key that is held down goes on moving, but clicks only once.
    const auto addClick = [&add](const QKeySequence &keys, const std::function<void()> &action) {
        add(keys, action)->setAutoRepeat(false);
    };
    addClick(Qt::Key_F1, [this] { cmdDispHowToUse_Click(); });
    add(QKeySequence::Find, [this] { cmdSearch_Click(); });
    add(Qt::Key_F3, [this] { GoOnSearching(false); });
    add(Qt::SHIFT | Qt::Key_F3, [this] { GoOnSearching(true); });
    add(Qt::CTRL | Qt::Key_Right, [this] { ChooseSpot(false); });
    add(Qt::CTRL | Qt::Key_Left, [this] { ChooseSpot(true); });
    addClick(Qt::CTRL | Qt::Key_Space, [this] { ClickSpot(); });
    addClick(Qt::CTRL | Qt::Key_H, [this] { picText_MouseDown(Qt::RightButton, 0, 0); });
    addClick(Qt::CTRL | Qt::Key_L, [this] { ClickLineNumber(picText->ChosenSpot().line); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Down, [this] { ClickLineNumber(m_round.lngMarkLine + 1); });
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Up, [this] { ClickLineNumber(m_round.lngMarkLine - 1); });
    add(Qt::CTRL | Qt::Key_Down, [this] { VScroll->setValue(VScroll->value() + 1); });
    add(Qt::CTRL | Qt::Key_Up, [this] { VScroll->setValue(VScroll->value() - 1); });
}

/// How far the learner is: below the page, where nothing pushes the buttons off a small screen.
QLayout *frmText::StateControls()
{
    lblMin->setText(u"分"_s);
    lblSec->setText(u"秒"_s);
    for (QLabel *const number : {lblNum, lblMinN, lblSecN}) {
        number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        number->setMinimumWidth(number->fontMetrics().horizontalAdvance(u"0000"_s));
    }
    lblNum->setText(u"0"_s);
    // Their names are their numbers.
    lblNum->setAccessibleDescription(u"回答数"_s);
    lblMinN->setAccessibleDescription(u"学習時間の分"_s);
    lblSecN->setAccessibleDescription(u"学習時間の秒"_s);
    prgShown->setObjectName(u"prgShown"_s);
    prgShown->setAccessibleName(u"表示した正解の割合"_s);
    prgShown->setTextVisible(false);
    prgShown->setFixedSize(fontMetrics().averageCharWidth() * 16, qMax(8, fontMetrics().height() / 2));
    for (QWidget *const control : std::initializer_list<QWidget *>{prgShown, lblMinN, lblMin, lblSecN, lblSec})
        KeepPlaceWhenHidden(control);

    QLabel *const lblNumN = AddLabel(u"lblNumN"_s);
    lblNumN->setText(u"回答数："_s);
    auto *const places = new FlowLayout(20);
    for (QWidget *const control : {Group({lblNumN, lblNum}), Group({prgShown, lblShown}),
                                   static_cast<QWidget *>(lblPlace), static_cast<QWidget *>(lblKeyword)})
        places->addWidget(control);
    auto *const state = new QHBoxLayout;
    state->addLayout(places, 1);
    state->addWidget(Group({lblMinN, lblMin, lblSecN, lblSec}), 0, Qt::AlignTop);
    return state;
}

/// Controls that stay beside each other.
QWidget *frmText::Group(const QList<QWidget *> &controls)
{
    auto *const group = new QWidget(this);
    auto *const row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    for (QWidget *const control : controls)
        row->addWidget(control, 0, Qt::AlignVCenter);
    return group;
}

// A click leaves the focus in the text, where Enter is; Tab still reaches every button, and Enter presses it there.
QPushButton *frmText::AddButton(const QString &name, const QString &caption, void (frmText::*handler)())
{
    auto *const button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setFocusPolicy(Qt::TabFocus);
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this, handler);
    return button;
}

QLabel *frmText::AddLabel(const QString &name)
{
    auto *const label = new QLabel(this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

void frmText::Form_Load()
{
    WriteTrace(u"■frmText.Form_Load()");
    setWindowTitle(ProductName() + u" Ver"_s + VersionText() + u" ["_s + m_place.userName + u']');
    lblKeyword->hide();
    QPalette dimmed = lblKeyword->palette();
    dimmed.setColor(QPalette::WindowText, QColor(128, 128, 128)); // colour 8 of the palette of 16
    lblKeyword->setPalette(dimmed);

    // The letters' size decides the window's, and that the greatest left edge.
    const QRect area = screen()->availableGeometry();
    m_upper = UpperBounds(area.width());
    QStringList repairs; // are shown when the window is
    if (m_settingsFile.Exists())
        m_settings = m_settingsFile.Read(m_defaults, m_upper, &repairs);
    ApplySettings();
    const QSize remembered = m_settingsFile.ReadFormSize();
    resize(
        (remembered.isEmpty() ? sizeHint() : remembered.expandedTo(minimumSizeHint())).boundedTo(RoomOnScreen(this)));
    m_upper = UpperBounds(LargestLeft(width()));
    int left = area.left() + (area.width() - width()) / 2;
    if (m_settingsFile.Exists())
        left = m_settingsFile.Read(m_defaults, m_upper, &repairs).FormLeft;
    move(left, area.top() + (area.height() - height()) / 3);

    for (QWidget *const control : {static_cast<QWidget *>(cmdIni), static_cast<QWidget *>(cmdEdit),
                                   static_cast<QWidget *>(cmdReRead), static_cast<QWidget *>(chkSpeak)})
        control->setEnabled(false);
    for (QLabel *const label : {lblMinN, lblMin, lblSecN, lblSec})
        label->hide();
    SetUpScrollBar();
    m_wheelMessage = RegisterMessageName(u"MSWHEEL_ROLLMSG"_s);
}

// Not every window system tells a window when it becomes active, so the first time is when it is shown.
void frmText::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_isActivated)
        return;
    m_isActivated = true;
    activateWindow();
    picText->setFocus();
    QTimer::singleShot(0, this, [this] {
        Form_Activate();
        if (!m_isTextLoaded)
            cmdFile_Click();
    });
}

/// The window was shown first, or the learner came back to it from another window of the program.
void frmText::Form_Activate()
{
    WriteTrace(u"■frmText.Form_Activate()");
    ReadSettings();
    ApplySettings();
}

void frmText::ReadSettings()
{
    if (!m_settingsFile.Exists()) {
        m_settings = m_defaults;
        m_settings.FormLeft = x();
        return;
    }
    QStringList messages;
    m_settings = m_settingsFile.Read(m_defaults, m_upper, &messages);
    if (m_hasShownRepairs)
        return;
    m_hasShownRepairs = true;
    for (const QString &message : messages)
        m_desktop.ShowMessage(message);
}

void frmText::ApplySettings()
{
    picText->SetAppearance(m_settings.FontSize, m_settings.LineSpace, m_settings.bolDispLineNum);
}

/// Widens the window, up to the screen, where a line of the greatest length does not fit into it any more.
void frmText::WidenToText()
{
    const QRect area = screen()->availableGeometry();
    const int wanted = qMin(sizeHint().width(), RoomOnScreen(this).width());
    if (isMaximized() || isFullScreen() || wanted <= width())
        return;
    const int frame = frameGeometry().width() - width();
    resize(wanted, height());
    move(qMax(area.left(), qMin(x(), area.right() + 1 - wanted - frame)), y());
}

/// The largest left edge at which a window of a width is still on the screen, pixels. Left edges are those of the whole
/// screen, panels at its side included: a window must not move on by a panel's width at each start.
int frmText::LargestLeft(int widthPx) const
{
    return qMax(0, screen()->geometry().right() + 1 - widthPx);
}

void frmText::Form_Resize()
{
    WriteTrace(u"■frmText.Form_Resize");
    // Nothing else: the text area sees to its rows itself.
}

void frmText::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Form_Resize();
}

void frmText::SetUpScrollBar()
{
    const PageLayout &layout = picText->Layout();
    const int lines = m_text.LineCount();
    const bool canScroll = lines > 0 && lines >= layout.RowsPerPage();
    VScroll->setRange(1, canScroll ? lines : 1);
    VScroll->setPageStep(layout.LargeChange());
    VScroll->setEnabled(canScroll);
    VScroll->setVisible(canScroll);
    if (!IsInView(picText->ChosenSpot().line))
        picText->SetSpot(Place()); // what is not seen must not be clicked
    ShowProgress();
}

PageInView frmText::Page() const
{
    const PageLayout &layout = picText->Layout();
    return {VScroll->value(), layout.RowsPerPage(), layout.LargeChange(), VScroll->maximum(),
            VScroll->isEnabled() && !VScroll->isHidden()};
}

bool frmText::IsInView(int line) const
{
    return line >= VScroll->value() && line < VScroll->value() + picText->Layout().RowsPerPage();
}

void frmText::VScroll_Change()
{
    WriteTrace(u"■frmText.VScroll_Change");
    picText->SetSpot(Place());
    picText->SetTopLine(VScroll->value());
    ShowProgress();
}

/// Brings a line to the top and paints the page anew, also where that line stands there already.
void frmText::ShowLine(int line)
{
    if (VScroll->value() != line)
        VScroll->setValue(line);
    else
        VScroll_Change();
}

void frmText::ShowCount()
{
    lblNum->setText(QString::number(m_round.lngOpenCount));
    lblNum->repaint();
}

/// Shows how many of the file's answers are shown and which lines the page holds.
void frmText::ShowProgress()
{
    const int blanks = m_round.BlankCount();
    const int lines = m_text.LineCount();
    prgShown->setVisible(blanks > 0);
    prgShown->setRange(0, qMax(1, blanks));
    prgShown->setValue(m_round.ShownCount());
    prgShown->update(); // the bar itself would wait for a change of nine pixels
    lblShown->setText(blanks == 0 ? QString() : QString(u"表示 %1 / %2"_s.arg(m_round.ShownCount()).arg(blanks)));
    const int first = VScroll->value();
    const int last = qMin(lines, first + picText->Layout().RowsPerPage() - 1);
    lblPlace->setText(lines == 0 ? QString() : QString(u"%1 ～ %2 行 / %3 行"_s.arg(first).arg(last).arg(lines)));
}

QString frmText::StudyFolderPath() const
{
    return JoinPath(m_place.applicationFolder, u"txt"_s);
}

void frmText::cmdFile_Click()
{
    WriteTrace(u"■frmText.cmdFile_Click()");
    SaveFormPos();
    if (m_hasSession) {
        CompleteSession();
        QString error;
        if (!m_log.WriteLog(u"DBUpdRecKotoban "_s + TimeText(m_desktop.Now()), &error))
            m_desktop.ShowMessage(error + u"\r\n  "_s + m_log.Path());
    }
    const QString folder = StudyFolderPath();
    if (!QFileInfo(folder).isDir()) {
        m_desktop.ShowMessage(u"次のフォルダが見つかりません。\r\n  "_s + folder +
                              u"\r\n\r\n上のフォルダを作成してください。"_s);
        return;
    }
    if (!m_frmFile)
        m_frmFile =
            std::make_unique<frmFile>(m_desktop, m_database, m_msg, m_place.applicationFolder, m_place.userName, this);
    PlaceFileWindow();
    const FileChoice choice = m_frmFile->Choose(m_settings.TextEditor);
    if (choice == FileChoice::EndProgram) {
        m_isEnded = true;
        hide();
        Q_EMIT Ended();
        return;
    }
    Form_Activate();
    if (choice == FileChoice::Chosen)
        OpenSession(m_frmFile->ChosenPath());
    activateWindow();
    picText->setFocus();
}

/// Saves the left edge, and the size beside it. A window can stand farther right than the bound allows; the value is
/// cut to it, or the next start would complain about what the program wrote itself.
void frmText::SaveFormPos()
{
    const bool isAsUsual = !isMaximized() && !isFullScreen();
    const QSize usualSize = isAsUsual ? size() : normalGeometry().size();
    m_settingsFile.WriteFileIniFormPos(qMin(x(), LargestLeft(usualSize.width())));
    m_settingsFile.WriteFormSize(usualSize);
}

/// Puts the file selection window over the study window: centred on it, its top at the button that opens it.
void frmText::PlaceFileWindow()
{
    const QRect area = screen()->availableGeometry();
    const int left = x() + (width() - m_frmFile->width()) / 2;
    const int top = cmdFile->mapToGlobal(QPoint(0, 0)).y();
    m_frmFile->move(qMax(area.left(), qMin(left, area.right() + 1 - m_frmFile->width())),
                    qMax(area.top(), qMin(top, area.bottom() + 1 - m_frmFile->height())));
}

/// Begins a session with a file: its row is there before the file is read, so that every attempt leaves one.
void frmText::OpenSession(const QString &path)
{
    // What was typed ahead was meant for the file list. It arrives here and while the file is read, and does nothing.
    m_inputGuard = std::make_unique<InputGuard>();
    const auto listenAgain = qScopeGuard([this] {
        // Once all that has arrived by now was handled.
        QTimer::singleShot(0, this, [this] { m_inputGuard.reset(); });
    });
    QCoreApplication::processEvents();
    if (m_isEnded)
        return; // one of those events closed the window
    m_hasSession = true;
    m_sessionStart = m_desktop.Now();
    m_round.lngOpenCount = 0;
    ShowCount();
    DBInsRecKotoban(m_database, m_sessionStart, m_place.userName, GetFileTitle(path));

    QString message;
    int errorLine = 0;
    m_path.clear();
    m_text = DisplayText();
    m_round.Load(0);
    ForgetPlaces();
    ClearClock();
    const bool isLoaded = LoadFile(path, false, &message, &errorLine);
    if (m_isEnded)
        return; // the window was closed while the file was read
    if (!isLoaded) {
        SetUpScrollBar();
        ShowLine(1);
        Ask(message, MsgStyle::Ok, u"notify.wav"_s);
        return;
    }
    m_path = path;
    ShowLine(1);
    StartClock();
    if (!message.isEmpty())
        m_desktop.ShowMessage(message);
}

/// Reads a file into the page.
/// @param keepsAnswers  whether this is the open file once more, whose answers stay shown
/// @param message  the refusal, or what is wrong with the pictures of a file that was read
/// @return false after a refusal, or when the window was closed meanwhile; the page is then as before
bool frmText::LoadFile(const QString &path, bool keepsAnswers, QString *message, int *errorLine)
{
    StudyLines lines;
    if (!ReadTextFile(path, MaxLineBytes, &lines, message, errorLine))
        return false;
    m_isTextLoaded = true;
    m_text = DisplayText(std::move(lines));
    *message = BadPictureNamesMessage(BadPictureNames(m_text));
    if (keepsAnswers)
        m_round.Reload(m_text.Blanks().Count());
    else
        m_round.Load(m_text.Blanks().Count());
    picText->SetStudy(&m_text, &m_round);
    ForgetPlaces();
    SetUpScrollBar();
    for (QWidget *const control : {static_cast<QWidget *>(cmdIni), static_cast<QWidget *>(cmdEdit),
                                   static_cast<QWidget *>(cmdReRead), static_cast<QWidget *>(chkSpeak)})
        control->setEnabled(true);
    return true;
}

/// The open text is another one: what was found in the one before it counts no more.
void frmText::ForgetPlaces()
{
    picText->SetMark(Place());
    picText->SetSpot(Place());
    lblKeyword->hide();
    if (m_frmSearch) {
        m_search->SetText(&m_text);
        m_frmSearch->Refresh();
    }
}

void frmText::StartClock()
{
    m_clockStart = m_desktop.Now();
    ClearClock();
    Timer1->start();
    // The first tick at once: by the time of the next one the second may have changed, and the clock would stay empty.
    QTimer::singleShot(0, this, &frmText::Timer1_Timer);
}

void frmText::ClearClock()
{
    Timer1->stop();
    lblMinN->clear();
    lblSecN->clear();
    lblMin->hide();
    lblSec->hide();
}

void frmText::Timer1_Timer()
{
    WriteTrace(u"■frmText.Timer1_Timer");
    const std::optional<ElapsedTime> elapsed = ClockTick(m_clockStart, m_desktop.Now());
    if (!elapsed)
        return;
    lblSecN->setText(QString::number(elapsed->seconds));
    if (elapsed->minutes > 0) {
        lblMinN->setText(QString::number(elapsed->minutes));
        lblMinN->show();
        lblMin->show();
    } else {
        lblSecN->show();
        lblSec->show();
        lblMinN->hide();
        lblMin->hide();
    }
}

void frmText::CompleteSession()
{
    DBUpdRecKotoban(m_database, m_desktop, m_sessionStart, m_place.userName, m_round.lngOpenCount);
}

/// Shows a question or a notice over this window.
MsgResult frmText::Ask(const QString &message, MsgStyle style, const QString &soundName)
{
    const MsgResult result = m_msg.DispFrmMsg(this, message, style, soundName);
    Form_Activate();
    return result;
}

void frmText::OpenInEditorAt(int line)
{
    OpenInEditor(m_desktop, m_settings.TextEditor, m_path, line);
}

// Session and clock go on through a re-read.
void frmText::cmdReRead_Click()
{
    WriteTrace(u"■frmText.cmdReRead_Click()");
    if (m_path.isEmpty())
        return;
    const int topLine = VScroll->value();
    QString message;
    int errorLine = 0;
    if (!LoadFile(m_path, true, &message, &errorLine)) {
        if (m_isEnded)
            return;
        const QString question = message + u"\r\n\r\nこのファイルを編集しますか？"_s;
        if (Ask(question, MsgStyle::OkCancel, u"notify.wav"_s) == MsgResult::Ok)
            OpenInEditorAt(errorLine);
        return;
    }
    ShowLine(qMin(topLine, VScroll->maximum()));
    picText->setFocus();
    if (!message.isEmpty())
        m_desktop.ShowMessage(message);
}

void frmText::cmdEdit_Click()
{
    WriteTrace(u"■frmText.cmdEdit_Click()");
    if (m_path.isEmpty())
        return;
    cmdReRead->setFocus(); // so that one key reads the edited file again
    OpenInEditorAt(m_round.lngMarkLine != 0 ? m_round.lngMarkLine : VScroll->value());
}

void frmText::cmdIni_Click()
{
    WriteTrace(u"■frmText.cmdIni_Click()");
    frmIni window(m_desktop, m_msg, m_defaults, m_upper, this);
    Settings settings = m_settings;
    if (window.Edit(&settings)) {
        picText->setFocus();
        if (!m_settingsFile.WriteFileIniEx(settings))
            m_desktop.ShowMessage(u"設定を保存できません。\r\n  "_s + m_place.settingsPath);
        m_settings = settings;
        ApplySettings();
        WidenToText();
        ShowLine(VScroll->value());
    } else {
        Form_Activate();
    }
    // A message box over the settings window may have left no window active.
    activateWindow();
    picText->setFocus();
}

void frmText::cmdDispHowToUse_Click()
{
    WriteTrace(u"■frmText.cmdDispHowToUse_Click()");
    const QString help = JoinPath(JoinPath(m_place.applicationFolder, u"htm"_s), u"index.htm"_s);
    if (!QFileInfo::exists(help))
        m_desktop.ShowMessage(help + u"が見つかりません。"_s);
    else if (!m_desktop.OpenWithShell(help, m_place.applicationFolder))
        m_desktop.ShowMessage(help + u"\r\nを開けません。"_s);
}

void frmText::cmdSearch_Click()
{
    WriteTrace(u"■frmText.cmdSearch_Click");
    if (!m_frmSearch) {
        m_search =
            std::make_unique<KeywordSearch>(ReadKeywordList(JoinPath(m_place.applicationFolder, u"KeywordList.txt"_s)));
        m_search->SetText(&m_text);
        m_frmSearch = std::make_unique<frmSearch>(*m_search, this);
        connect(m_frmSearch.get(), &frmSearch::PlaceChosen, this, &frmText::ShowPlace);
    }
    m_frmSearch->Open();
}

void frmText::GoOnSearching(bool backwards)
{
    if (m_frmSearch)
        m_frmSearch->GoOn(backwards);
}

/// Marks a place that was found and brings it into view, with a few lines above it where the view has to move.
void frmText::ShowPlace(const Place &place, const QString &wanted)
{
    constexpr int linesAbove = 3;
    const int wordWidthPx = fontMetrics().averageCharWidth() * 24; // so that a long word does not hide the verdict
    picText->SetMark(place);
    lblKeyword->setText(fontMetrics().elidedText(wanted, Qt::ElideMiddle, wordWidthPx) +
                        (place.line == 0 ? u"はありません"_s : QString()));
    lblKeyword->show();
    if (place.line > 0 && !IsInView(place.line))
        VScroll->setValue(qMax(1, place.line - linesAbove));
}

void frmText::ShowPicture(const QString &name)
{
    frmPicture(StudyFolderPath(), name, this).exec();
}

void frmText::chkSpeak_Click()
{
    WriteTrace(u"■frmText.chkSpeak_Click");
    picText->setFocus();
}

void frmText::picText_KeyDown(int key)
{
    WriteTrace(u"■frmText.picText_KeyDown");
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        Enter();
    else if (key == Qt::Key_F2)
        m_desktop.ShowMessage(u"F2"_s); // a left-over that is kept; it does nothing else
}

void frmText::Enter()
{
    if (m_path.isEmpty())
        return;
    const EnterDecision decision = DecideEnter(m_round, m_text, Page());
    if (decision.action == EnterAction::Reveal) {
        Reveal(decision.blank);
        return;
    }
    if (decision.action == EnterAction::AskThenTurn &&
        Ask(AllShownMessage(m_round.BlankCount()), MsgStyle::YesNo, u"tada.wav"_s) == MsgResult::Cancel) {
        close();
        return;
    }
    TurnPageAndShow();
}

void frmText::Reveal(int blank)
{
    const bool isShown = m_round.Toggle(blank);
    picText->DrawBlank(blank);
    ShowProgress();
    if (isShown)
        ShowCount();
}

void frmText::TurnPageAndShow()
{
    ShowLine(TurnPage(&m_round, Page()));
}

void frmText::picText_MouseDown(Qt::MouseButton button, int xPx, int yPx)
{
    WriteTrace(u"■frmText.picText_MouseDown");
    if (m_path.isEmpty())
        return;
    if (button == Qt::LeftButton)
        ClickLeft(xPx, yPx);
    else if (button == Qt::RightButton)
        HideAllAnswers();
}

// Nothing is meant to happen here; the pointer's shape is the text area's own business.
void frmText::picText_MouseMove()
{
    WriteTrace(u"■frmText.picText_MouseMove");
}

// Nothing is meant to happen here either.
void frmText::picText_OLEDragDrop()
{
    WriteTrace(u"■frmText.picText_OLEDragDrop");
}

void frmText::ClickLeft(int xPx, int yPx)
{
    const PageLayout &layout = picText->Layout();
    const int topLine = VScroll->value();
    const int blank = HitTest(m_text, xPx, yPx, topLine, layout);
    if (blank > 0)
        Reveal(blank);
    if (chkSpeak->isChecked()) {
        const QString word = TextUnderPointer(m_text, m_round, xPx, yPx, topLine, layout);
        if (!word.isEmpty())
            SpeakWord(m_desktop, m_place.applicationFolder, word);
    }
    // A picture inside a blank is part of the answer: the click that shows the answer opens it.
    const QString picture = blank > 0 ? PictureOfAnswer(m_text, m_round, blank)
                                      : PictureUnderPointer(m_text, m_round, xPx, yPx, topLine, layout);
    if (!picture.isEmpty())
        ShowPicture(picture);
    if (layout.hasLineNumbers) {
        const int marked = layout.IsInNumberStrip(xPx) ? MarkLineAt(yPx, topLine, layout) : 0;
        if (std::exchange(m_round.lngMarkLine, marked) != marked)
            picText->DrawLineNumbers();
    }
}

void frmText::ChooseSpot(bool backwards)
{
    if (!m_path.isEmpty())
        picText->SetSpot(
            NextPlace(SpotsInView(m_text, Page(), chkSpeak->isChecked()), picText->ChosenSpot(), backwards));
}

/// Clicks what the learner has chosen by keys, in its first cell.
void frmText::ClickSpot()
{
    const Place spot = picText->ChosenSpot();
    if (spot.line == 0)
        return;
    const PageLayout &layout = picText->Layout();
    const int cell = CellsOf(m_text.Line(spot.line).first(spot.column - 1));
    picText_MouseDown(Qt::LeftButton, layout.TextLeftPx() + cell * layout.cellWidthPx + layout.cellWidthPx / 2,
                      layout.RowTopPx(spot.line - VScroll->value() + 1) + layout.linePitchPx / 2);
}

/// Clicks the number of a line, or of the one in view that is next to it.
void frmText::ClickLineNumber(int line)
{
    const int topLine = VScroll->value();
    const int rows = qMin(picText->Layout().RowsPerPage(), m_text.LineCount() - topLine + 1);
    const int row = qBound(1, line - topLine + 1, qMax(1, rows));
    picText_MouseDown(Qt::LeftButton, 1, picText->Layout().RowTopPx(row) + picText->Layout().linePitchPx / 2);
}

void frmText::HideAllAnswers()
{
    m_round.HideAll();
    m_round.lngMarkLine = 0;
    picText->DrawPage();
    ShowProgress();
}

void frmText::closeEvent(QCloseEvent *event)
{
    if (!m_isEnded)
        Form_Unload();
    event->accept();
}

void frmText::Form_Unload()
{
    WriteTrace(u"■frmText.Form_Unload");
    Timer1->stop();
    m_isEnded = true;
    if (m_hasSession)
        CompleteSession();
    SaveFormPos();
    m_database.Close();
    Q_EMIT Ended();
}

void frmText::Record()
{
    if (m_isEnded)
        return;
    m_isEnded = true;
    if (m_hasSession)
        CompleteSession();
    m_database.Close();
}
