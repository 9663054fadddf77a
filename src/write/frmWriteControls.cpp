// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Construction of the writing window: its controls, keys, colours and size.
#include "base/modLog.h"
#include "settings/modZoom.h"
#include "widgets/BarButton.h"
#include "widgets/Contrast.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/NoticePlace.h"
#include "widgets/ScreenFit.h"
#include "write/FindField.h"
#include "write/LineChecks.h"
#include "write/ProblemList.h"
#include "write/WriteBar.h"
#include "write/WritePage.h"
#include "write/WriteStateBar.h"
#include "write/frmWrite.h"
#include "write/modCleanText.h"

#include <QAction>
#include <QEvent>
#include <QFileSystemWatcher>
#include <QGuiApplication>
#include <QShortcut>
#include <QStandardPaths>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int DraftMs = 5000; // from a change to the draft that has it

} // namespace

frmWrite::frmWrite(SystemServices &services, frmMsg &msg, const Settings &settings, const QString &applicationFolder,
                   QWidget *owner)
    : QDialog(owner), m_services(services), m_msg(msg), m_settings(settings), m_applicationFolder(applicationFolder),
      m_studyFolder(JoinPath(applicationFolder, u"txt"_s)),
      m_pictureFolder(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation)), m_bar(new WriteBar(this)),
      txtText(new WritePage(this)),
      m_checks(new LineChecks(
          txtText->document(), [this](const QString &name) { return m_pictures && !m_pictures->Find(name).isEmpty(); },
          this)),
      m_templates(new QWidget(txtText->viewport())), m_problems(new ProblemList(this)),
      m_stateBar(new WriteStateBar(this)), m_keeping(new QTimer(this)), m_watcher(new QFileSystemWatcher(this))
{
    setObjectName(u"frmWrite"_s);
    setWindowFlags(Qt::Window); // with a button that maximises it
    AddControls();
    LayOut();
    Connect();
    AddKeys();
    Form_Load();
}

frmWrite::~frmWrite() = default;

void frmWrite::Form_Load()
{
    WriteTrace(u"■frmWrite.Form_Load");
    if (!IsZoomStep(m_settings.zoom))
        m_settings.zoom = ZoomForDesktopFont(fontInfo().pointSizeF());
    ApplyZoom(m_settings.zoom);
    ShowColours();
    ShowFound();
    KeepMinimumSize();
    const QSize withLongName = m_bar->sizeHint() + QSize(Ems(fontMetrics(), 8), 0);
    resize(sizeHint().expandedTo(withLongName).boundedTo(AvailableSize(this)));
}

void frmWrite::AddControls()
{
    NameControl(txtText, u"txtText"_s, u"学習ファイルの文章"_s);
    txtText->setAccessibleDescription(u"覚える言葉を選んで Ctrl+B を押すと，空欄になります"_s);
    m_templates->setObjectName(u"templates"_s);
    auto *const row = new QHBoxLayout(m_templates);
    for (int number = 0; number < int(Templates().size()); ++number) {
        QPushButton *const button = NamedButton(u"cmdTemplate%1"_s.arg(number + 1),
                                                u"%1(&%2)"_s.arg(Templates().at(size_t(number)).name).arg(number + 1),
                                                u"この形の例を入れます (Alt+%1)"_s.arg(number + 1), m_templates);
        button->setFlat(true);
        button->setCursor(Qt::ArrowCursor);
        connect(button, &QPushButton::clicked, this, [this, number] { cmdTemplate_Click(number); });
        row->addWidget(button);
    }
    m_keeping->setObjectName(u"tmrKeep"_s);
    m_keeping->setSingleShot(true);
    m_keeping->setInterval(DraftMs);
}

void frmWrite::LayOut()
{
    auto *const inPage = new QVBoxLayout(txtText->viewport());
    inPage->addStretch();
    inPage->addWidget(m_templates, 0, Qt::AlignHCenter);
    inPage->addStretch();
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(txtText, 1);
    column->addWidget(m_problems);
    column->addWidget(m_stateBar);
    for (QPushButton *const button : findChildren<QPushButton *>())
        button->setAutoDefault(false); // Enter belongs to the text
    SetTabOrder({m_bar->MenuButton(), txtText, m_problems->List()});
}

void frmWrite::Connect()
{
    connect(m_bar->cmdSave, &QPushButton::clicked, this, &frmWrite::cmdSave_Click);
    connect(m_bar->cmdUndo, &QPushButton::clicked, txtText, &QPlainTextEdit::undo);
    connect(m_bar->cmdRedo, &QPushButton::clicked, txtText, &QPlainTextEdit::redo);
    connect(m_bar->cmdPen, &QPushButton::clicked, this, &frmWrite::cmdPen_Click);
    connect(m_bar->cmdPicture, &QPushButton::clicked, this, &frmWrite::cmdPicture_Click);
    connect(m_bar->cmdFind, &QPushButton::clicked, this, &frmWrite::cmdFind_Click);
    connect(m_bar->cmdMend, &QPushButton::clicked, this, &frmWrite::cmdMend_Click);
    m_bar->cmdUndo->setEnabled(false);
    m_bar->cmdRedo->setEnabled(false);
    connect(txtText, &QPlainTextEdit::undoAvailable, m_bar->cmdUndo, &QWidget::setEnabled);
    connect(txtText, &QPlainTextEdit::redoAvailable, m_bar->cmdRedo, &QWidget::setEnabled);
    connect(txtText, &QPlainTextEdit::modificationChanged, m_bar, &WriteBar::ShowUnsaved);
    connect(txtText, &QPlainTextEdit::textChanged, this, &frmWrite::txtText_Change);
    connect(txtText, &QPlainTextEdit::textChanged, this, &frmWrite::txtText_CursorMove);
    connect(txtText, &QPlainTextEdit::cursorPositionChanged, this, &frmWrite::txtText_CursorMove);
    connect(txtText, &WritePage::ZoomTurned, this, [this](int steps) { ApplyZoom(ZoomBy(m_settings.zoom, steps)); });
    connect(txtText, &WritePage::TextPasted, this, &frmWrite::txtText_Paste);
    connect(txtText, &WritePage::FilesDropped, this, &frmWrite::txtText_Drop);
    connect(m_checks, &LineChecks::Changed, this, &frmWrite::ShowFound);
    connect(m_checks, &LineChecks::LinesChecked, txtText, &WritePage::ShowProblems);
    connect(m_problems, &ProblemList::Chosen, this, [this](int line, int column, int length) {
        txtText->GoTo(line, column, length);
        txtText->setFocus();
    });
    NoticePlace *const notices = m_stateBar->Notices();
    connect(notices, &NoticePlace::Chosen, this, &frmWrite::lblNotice_Click);
    connect(notices, &NoticePlace::LineChosen, this, [this](int line) { txtText->GoTo(line); });
    connect(notices, &NoticePlace::FocusFreed, txtText, qOverload<>(&QWidget::setFocus));
    connect(m_stateBar->Find(), &FindField::Asked, this, &frmWrite::Find);
    connect(m_stateBar->Find(), &FindField::Closed, txtText, qOverload<>(&QWidget::setFocus));
    connect(m_keeping, &QTimer::timeout, this, &frmWrite::tmrKeep_Timer);
    connect(m_watcher, &QFileSystemWatcher::fileChanged, this, &frmWrite::ShowFileChange);
    connect(&m_darkMode, &DarkMode::Changed, this, &frmWrite::ShowColours);
}

/// Keys of what the menu of the bar always has, and the usual ones of its buttons.
void frmWrite::AddKeys()
{
    const auto add = [this](const QKeySequence &keys, auto action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    add(Qt::CTRL | Qt::Key_S, [this] { m_bar->cmdSave->click(); });
    add(Qt::CTRL | Qt::Key_Z, [this] { txtText->undo(); });
    add(Qt::CTRL | Qt::Key_Y, [this] { txtText->redo(); });
    add(Qt::CTRL | Qt::Key_F, [this] { m_bar->cmdFind->click(); });
    add(Qt::Key_F3, [this] { Find(false); });
    add(Qt::SHIFT | Qt::Key_F3, [this] { Find(true); });
    const auto addEntry = [this](QAction *entry, const QList<QKeySequence> &keys, auto action) {
        entry->setShortcuts(keys);
        connect(entry, &QAction::triggered, this, action);
    };
    addEntry(m_bar->actBlank, {Qt::CTRL | Qt::Key_B}, [this] { actBlank_Click(); });
    addEntry(m_bar->actPasteTable, {Qt::CTRL | Qt::SHIFT | Qt::Key_V}, [this] { actPasteTable_Click(); });
    addEntry(m_bar->actJoin, {Qt::CTRL | Qt::Key_J}, [this] { actJoin_Click(); });
    addEntry(m_bar->actLine, {Qt::CTRL | Qt::Key_G}, [this] { actLine_Click(); });
    addEntry(m_bar->actProblem, {Qt::Key_F8}, [this] { actProblem_Click(); });
    // The key of + without Shift too, on English and on Japanese keyboards.
    addEntry(m_bar->actLarger, {Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal, Qt::CTRL | Qt::Key_Semicolon},
             [this] { ApplyZoom(ZoomBy(m_settings.zoom, 1)); });
    addEntry(m_bar->actSmaller, {Qt::CTRL | Qt::Key_Minus}, [this] { ApplyZoom(ZoomBy(m_settings.zoom, -1)); });
    addEntry(m_bar->actUsualSize, {Qt::CTRL | Qt::Key_0}, [this] { ApplyZoom(ZoomSteps.front()); });
    addEntry(m_bar->actHelp, {Qt::Key_F1}, [this] { actHelp_Click(); });
    for (QAction *const entry :
         {m_bar->actBlank, m_bar->actPasteTable, m_bar->actJoin, m_bar->actLine, m_bar->actUsualSize, m_bar->actHelp})
        entry->setAutoRepeat(false);
}

void frmWrite::ApplyZoom(int percent)
{
    m_settings.zoom = percent;
    txtText->SetAppearance(m_settings.FontSize, m_settings.LineSpace, m_settings.bolDispLineNum, percent);
}

/// Gives the bars the colours of the page, unless the desktop wants its own everywhere.
void frmWrite::ShowColours()
{
    const QPalette desktop = QGuiApplication::palette();
    const PageColours colours = ColoursOf(m_settings.pageColour, desktop, m_darkMode.IsDark());
    const bool isOwn = !IsHighContrast(desktop);
    setPalette(isOwn ? BarPalette(colours) : QPalette());
    txtText->SetColours(colours);
    m_stateBar->SetTooLongColour(isOwn ? colours.hardText : QColor());
}

bool frmWrite::event(QEvent *event)
{
    const bool isHandled = QDialog::event(event);
    if (event->type() == QEvent::FontChange)
        KeepMinimumSize();
    else if (event->type() == QEvent::ApplicationPaletteChange)
        ShowColours();
    return isHandled;
}

void frmWrite::KeepMinimumSize()
{
    setMinimumSize(LeastStudySize(fontMetrics()).boundedTo(AvailableSize(this)));
}

/// In a low window the list of problems leaves more to the page.
void frmWrite::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    constexpr int roomyRows = 24;
    m_problems->SetRows(height() < roomyRows * fontMetrics().height() ? 2 : 4);
}
