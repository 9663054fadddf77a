// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/NoticePlace.h"

#include "widgets/Contrast.h"
#include "widgets/ElidedLabel.h"
#include "widgets/LineField.h"
#include "widgets/Measures.h"
#include "widgets/NamedControls.h"

#include <QEvent>
#include <QPainter>
#include <QPushButton>
#include <QTimer>

using namespace Qt::Literals::StringLiterals;

/// Something to do about a notice: an underlined word, with its key if there is room for that.
class NoticeButton : public QPushButton
{
  public:
    explicit NoticeButton(const QString &name, QWidget *parent) : QPushButton(parent)
    {
        setObjectName(name);
        setFocusPolicy(Qt::TabFocus); // a click leaves the focus in the page
        setAutoDefault(true);         // Enter presses it too
        setCursor(Qt::PointingHandCursor);
        hide();
    }

    void Offer(const Notice::Offer &offer)
    {
        m_offer = offer;
        setAccessibleName(Caption(true));
        SetPlainToolTip(this, Caption(true));
    }

    NoticeAction Action() const
    {
        return m_offer.action;
    }

    void ShowKey(bool isShown)
    {
        setText(Caption(isShown && !m_offer.hasKeyInTip));
    }

    int WidthPx(bool hasKey) const
    {
        return fontMetrics().horizontalAdvance(Caption(hasKey && !m_offer.hasKeyInTip));
    }

  protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        QFont underlined = font();
        underlined.setUnderline(true);
        painter.setFont(underlined);
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(rect(), Qt::AlignCenter, text());
    }

  private:
    QString Caption(bool hasKey) const
    {
        return hasKey && !m_offer.key.isEmpty() ? u"%1（%2）"_s.arg(m_offer.text, m_offer.key) : m_offer.text;
    }

    Notice::Offer m_offer{};
};

namespace {

constexpr double LeastEms = 12;
constexpr double EdgeEms = 0.25;
constexpr double MarginEms = 0.6;
constexpr double LeastTextEms = 5; // of a text that is cut

} // namespace

NoticePlace::NoticePlace(QWidget *parent)
    : QWidget(parent), lblNotice(new ElidedLabel(u"lblNotice"_s, 0, this, Qt::ElideRight)),
      lblKeyword(new ElidedLabel(u"lblKeyword"_s, 0, this)), m_lineField(new LineField(this)),
      m_noticing(new QTimer(this))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Ignored);
    QWidget *previous = nullptr;
    for (size_t i = 0; i < m_buttons.size(); ++i) {
        m_buttons[i] = new NoticeButton(u"cmdNotice"_s + QString::number(i + 1), this);
        connect(m_buttons[i], &QPushButton::clicked, this,
                [this, button = m_buttons[i]] { Q_EMIT Chosen(button->Action()); });
        if (previous)
            setTabOrder(previous, m_buttons[i]);
        previous = m_buttons[i];
    }
    m_noticing->setObjectName(u"tmrNotice"_s);
    m_noticing->setSingleShot(true);
    connect(m_noticing, &QTimer::timeout, this, &NoticePlace::EndTime);
    m_lineField->hide();
    connect(m_lineField, &LineField::LineChosen, this, &NoticePlace::LineChosen);
    connect(m_lineField, &LineField::Left, this, [this] {
        m_lineField->hide();
        Update();
    });
    connect(m_lineField, &LineField::Closed, this, &NoticePlace::FocusFreed);
    Update();
    SetColours();
}

void NoticePlace::Put(NoticeTopic topic, const Notice &notice, int forMs)
{
    if (forMs > 0)
        m_noticing->start(forMs);
    if (m_notices.Put(topic, notice))
        Update();
}

void NoticePlace::Remove(NoticeTopic topic)
{
    if (m_notices.Remove(topic))
        Update();
}

void NoticePlace::EndTime()
{
    if (HasFocusInside())
        m_noticing->start(); // whoever is about to press a button needs longer
    else
        Remove(NoticeTopic::Done);
}

bool NoticePlace::HasFocusInside() const
{
    return focusWidget() && focusWidget()->hasFocus();
}

void NoticePlace::AskForLine(int line, int lineCount)
{
    m_lineField->show();
    Update();
    m_lineField->Open(line, lineCount);
}

/// Shows the current notice, or the field if that is open.
void NoticePlace::Update()
{
    const bool hadFocus = HasFocusInside() && !m_lineField->isVisible();
    const auto current = m_lineField->isHidden() ? m_notices.Current() : std::nullopt;
    const bool isSearch = current && current->first == NoticeTopic::Search;
    lblNotice->setVisible(current && !isSearch);
    lblKeyword->setVisible(isSearch);
    if (current)
        (isSearch ? lblKeyword : lblNotice)->SetText(current->second.text);
    for (size_t i = 0; i < m_buttons.size(); ++i) {
        const bool isOffered = current && i < current->second.offers.size();
        if (isOffered)
            m_buttons[i]->Offer(current->second.offers[i]);
        m_buttons[i]->setVisible(isOffered);
    }
    Arrange();
    if (hadFocus)
        Q_EMIT FocusFreed();
}

void NoticePlace::Arrange()
{
    const auto current = m_notices.Current();
    m_face = QRect();
    if (m_lineField->isVisibleTo(this))
        ArrangeField();
    else if (current) {
        const QFontMetrics font = fontMetrics();
        NoticeWidths widths{.textPx = font.horizontalAdvance(current->second.text) + 1,
                            .leastTextPx = Ems(font, LeastTextEms),
                            .gapPx = Ems(font, MarginEms)};
        for (size_t i = 0; i < current->second.offers.size(); ++i)
            widths.offers.push_back({m_buttons[i]->WidthPx(true), m_buttons[i]->WidthPx(false)});
        const int beforePx = Ems(font, EdgeEms) + Ems(font, MarginEms);
        const int aroundPx = beforePx + Ems(font, MarginEms);
        const NoticeFit fit = FitNotice(widths, width() - aroundPx);
        int contentPx = fit.textPx;
        for (int i = 0; i < fit.offers; ++i)
            contentPx += widths.gapPx + m_buttons[size_t(i)]->WidthPx(fit.hasKeys);
        const int facePx = qMin(height(), ButtonHeight(font));
        m_face = QRect((width() - contentPx - aroundPx) / 2, (height() - facePx) / 2, contentPx + aroundPx, facePx);
        const QRect text(m_face.left() + beforePx, m_face.top(), fit.textPx, facePx);
        lblNotice->setGeometry(text);
        lblKeyword->setGeometry(text);
        PutOffers(fit, text.right() + 1);
    }
    update();
}

/// Puts the buttons that fit one after the other; the others are hidden.
void NoticePlace::PutOffers(const NoticeFit &fit, int leftPx)
{
    for (size_t i = 0; i < m_buttons.size(); ++i) {
        NoticeButton *const button = m_buttons[i];
        if (int(i) >= fit.offers) {
            button->hide();
            continue;
        }
        leftPx += Ems(fontMetrics(), MarginEms);
        button->ShowKey(fit.hasKeys);
        button->setGeometry(leftPx, m_face.top(), button->WidthPx(fit.hasKeys), m_face.height());
        button->show();
        leftPx += button->width();
    }
}

void NoticePlace::ArrangeField()
{
    const QSize size = m_lineField->sizeHint().boundedTo(this->size());
    m_lineField->setGeometry((width() - size.width()) / 2, (height() - size.height()) / 2, size.width(), size.height());
}

QSize NoticePlace::minimumSizeHint() const
{
    return QSize(Ems(fontMetrics(), LeastEms), 0);
}

void NoticePlace::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        Arrange();
    else if (event->type() == QEvent::PaletteChange)
        SetColours();
}

/// Gives what is in the notice the colour of its text, but the keyword dark grey if that is readable there.
void NoticePlace::SetColours()
{
    const QColor darkGrey(128, 128, 128); // colour 8 of the 16-colour palette
    const QColor ground = palette().color(QPalette::ToolTipBase);
    const QColor text = palette().color(QPalette::ToolTipText);
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, text);
    lblNotice->setPalette(colours);
    for (NoticeButton *const button : m_buttons)
        button->setPalette(colours);
    const bool isLight = IsDarker(text, ground) && Contrast(darkGrey, ground) >= ShapeContrast;
    colours.setColor(QPalette::WindowText, isLight ? darkGrey : Dimmed(text, ground));
    lblKeyword->setPalette(colours);
}

void NoticePlace::paintEvent(QPaintEvent *)
{
    if (m_face.isEmpty())
        return;
    QPainter painter(this);
    const QColor window = palette().color(QPalette::Window);
    painter.fillRect(m_face, palette().color(QPalette::ToolTipBase));
    QRect edge = m_face;
    edge.setWidth(Ems(fontMetrics(), EdgeEms));
    painter.fillRect(edge, WithContrast(palette().color(QPalette::BrightText), window,
                                        palette().color(QPalette::WindowText), ShapeContrast));
}

void NoticePlace::resizeEvent(QResizeEvent *)
{
    Arrange();
}
