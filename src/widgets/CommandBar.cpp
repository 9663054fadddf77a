// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/CommandBar.h"

#include "widgets/BarButton.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"
#include "widgets/PageColours.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPainter>

#include <algorithm>
#include <limits>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int LineWidth = 1;
constexpr double LineEms = 1.3;
constexpr double MinTitleEms = 8;
constexpr double TitleSize = 1.08; // of the window's font
constexpr int MaxTitleChars = 200;

/// A line between groups in the middle of its place.
class GroupLine : public QWidget
{
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).fillRect(width() / 2, 0, LineWidth, height(), palette().color(QPalette::Mid));
    }
};

/// Space between the rings of the focus of neighbours. The gap that one sees is between their faces.
int Spacing(const QFontMetrics &font)
{
    return std::max(0, ControlGap(font) - 2 * FocusRingReach);
}

/// Width of the place of a line, which has half an em free between it and the faces at both sides.
int LinePlace(const QFontMetrics &font)
{
    return LineWidth + 2 * std::max(0, Ems(font, 0.5) - Spacing(font) - FocusRingReach);
}

} // namespace

QWidget *CommandBar::Command::Last() const
{
    return menuButton ? static_cast<QWidget *>(menuButton) : control;
}

CommandBar::CommandBar(const QString &titleName, QWidget *window)
    : QWidget(window), m_window(window), m_title(new ElidedLabel(titleName, MaxTitleChars, this)),
      m_row(new QHBoxLayout(this)), m_menuButton(new BarButton(u"cmdMore"_s, Icon::More, QString(), this)),
      m_menu(new QMenu(this)), m_belowHidden(m_menu->addSeparator())
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_row->setContentsMargins(WindowMargin, 0, WindowMargin, 0);
    m_row->addWidget(m_title, 1);
    m_row->addWidget(m_menuButton);
    m_menuButton->setAccessibleName(u"ほかの操作"_s);
    m_menuButton->setToolTip(u"ほかの操作"_s);
    m_menuButton->setMenu(m_menu);
    connect(m_menu, &QMenu::aboutToShow, this, &CommandBar::UpdateEntries);
    AdaptToFont();
    qApp->installEventFilter(this); // the widget with the focus may keep the Alt key to itself
}

void CommandBar::StartGroup()
{
    m_startsGroup = true;
}

void CommandBar::Add(QAbstractButton *control, BarButton *menuButton)
{
    Command command{.control = control, .menuButton = menuButton, .line = nullptr, .entry = new QAction(this)};
    if (std::exchange(m_startsGroup, false)) {
        command.line = new GroupLine(this);
        m_row->insertWidget(m_row->count() - 1, command.line);
    }
    auto *const place = new QHBoxLayout;
    place->setSpacing(0);
    m_row->insertLayout(m_row->count() - 1, place);
    QWidget *previous = m_commands.empty() ? nullptr : m_commands.back().Last();
    for (QWidget *const widget : {static_cast<QWidget *>(control), static_cast<QWidget *>(menuButton)}) {
        if (!widget)
            continue;
        place->addWidget(widget);
        if (previous)
            setTabOrder(previous, widget);
        previous = widget;
    }
    setTabOrder(previous, m_menuButton);

    command.entry->setVisible(false);
    m_window->addAction(command.entry); // for its key
    m_menu->insertAction(m_belowHidden, menuButton ? menuButton->menu()->menuAction() : command.entry);
    connect(command.entry, &QAction::triggered, control, &QAbstractButton::click);
    m_commands.push_back(command);
    AdaptToFont();
}

void CommandBar::SetLeavingOrder(const QList<QAbstractButton *> &controls)
{
    m_leaving.clear();
    for (const QAbstractButton *const control : controls)
        m_leaving.push_back(size_t(std::ranges::find(m_commands, control, &Command::control) - m_commands.begin()));
    Fit();
}

void CommandBar::AddToMenu(QAction *action)
{
    m_menu->addAction(action ? action : m_menu->addSeparator());
}

QLabel *CommandBar::AddRemark(const QString &name, const QString &text)
{
    m_remark = NamedLabel(name, text, this);
    KeepSizeWhenHidden(m_remark);
    m_row->setStretchFactor(m_title, 0);
    m_row->insertWidget(1, m_remark);
    m_row->insertStretch(2, 1);
    m_remark->setPalette(DimmedBarPalette(palette()));
    return m_remark;
}

QAction *CommandBar::NewEntry(const QString &name, const QString &text)
{
    auto *const entry = new QAction(text, m_window);
    entry->setObjectName(name);
    m_window->addAction(entry); // for its key
    return entry;
}

/// Least width of the title and the remark.
int CommandBar::TitlePx() const
{
    return m_title->minimumWidth() + (m_remark ? m_row->spacing() + m_remark->sizeHint().width() : 0);
}

BarFit CommandBar::FitIn(int widthPx) const
{
    std::vector<BarItem> items;
    for (const Command &command : m_commands) {
        const int menuWidth = command.menuButton ? command.menuButton->sizeHint().width() : 0;
        items.push_back({command.control->sizeHint().width() + menuWidth, command.line != nullptr});
    }
    const BarRoom room{.titlePx = TitlePx(),
                       .menuPx = m_menuButton->sizeHint().width(),
                       .linePx = LinePlace(fontMetrics()),
                       .gapPx = m_row->spacing()};
    return FitBar(items, m_leaving, room, widthPx - 2 * WindowMargin);
}

void CommandBar::Fit()
{
    const BarFit fit = FitIn(width());
    for (size_t i = 0; i < m_commands.size(); ++i) {
        Command &command = m_commands[i];
        const bool isShown = fit.shown[i];
        command.control->setVisible(isShown);
        command.entry->setShortcut(command.control->shortcut());
        command.entry->setEnabled(command.control->isEnabled());
        command.entry->setVisible(!isShown || isHidden());
        if (command.menuButton) {
            command.menuButton->setVisible(isShown);
            command.menuButton->menu()->menuAction()->setVisible(!isShown);
        }
        if (command.line)
            command.line->setVisible(fit.lines[i]);
    }
}

void CommandBar::UpdateEntries()
{
    for (const Command &command : m_commands) {
        command.entry->setText(command.control->text());
        command.entry->setCheckable(command.control->isCheckable());
        command.entry->setChecked(command.control->isChecked());
        if (!command.menuButton)
            continue;
        QAction *const submenu = command.menuButton->menu()->menuAction(); // the menu does not show its key
        submenu->setText(u"%1（%2）"_s.arg(command.control->text(), command.control->shortcut().toString()));
        submenu->setEnabled(command.control->isEnabled());
    }
}

void CommandBar::ShowLetters(bool areShown)
{
    for (const Command &command : m_commands)
        if (auto *const control = dynamic_cast<BarControl *>(command.control))
            control->ShowLetter(areShown);
}

void CommandBar::AdaptToFont()
{
    const QFontMetrics font = fontMetrics();
    m_row->setSpacing(Spacing(font));
    m_title->setMinimumWidth(Ems(font, MinTitleEms));
    QFont titleFont = this->font();
    titleFont.setBold(true);
    if (titleFont.pointSizeF() > 0)
        titleFont.setPointSizeF(titleFont.pointSizeF() * TitleSize);
    m_title->setFont(titleFont);
    for (const Command &command : m_commands)
        if (command.line)
            command.line->setFixedSize(LinePlace(font), Ems(font, LineEms));
    updateGeometry();
    Fit();
}

QSize CommandBar::sizeHint() const
{
    constexpr int unlimited = std::numeric_limits<int>::max();
    return QSize(FitIn(unlimited).widthPx + 2 * WindowMargin, BarHeight(fontMetrics()));
}

QSize CommandBar::minimumSizeHint() const
{
    return QSize(FitIn(0).widthPx + 2 * WindowMargin, BarHeight(fontMetrics()));
}

bool CommandBar::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Alt && m_window->isActiveWindow())
            ShowLetters(true);
        break;
    case QEvent::KeyRelease:
        if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_Alt)
            ShowLetters(false);
        break;
    case QEvent::WindowDeactivate:
        ShowLetters(false);
        break;
    case QEvent::EnabledChange:
        for (const Command &command : m_commands)
            if (command.control == watched)
                command.entry->setEnabled(command.control->isEnabled());
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

bool CommandBar::event(QEvent *event)
{
    const bool isHandled = QWidget::event(event);
    if (event->type() == QEvent::FontChange)
        AdaptToFont();
    else if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::ShowToParent ||
             event->type() == QEvent::HideToParent)
        Fit(); // a control has another size, or its key works no more
    return isHandled;
}

void CommandBar::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && m_remark)
        m_remark->setPalette(DimmedBarPalette(palette()));
}

void CommandBar::paintEvent(QPaintEvent *)
{
    QPainter(this).fillRect(0, height() - LineWidth, width(), LineWidth, palette().color(QPalette::Mid));
}

void CommandBar::resizeEvent(QResizeEvent *)
{
    Fit();
}
