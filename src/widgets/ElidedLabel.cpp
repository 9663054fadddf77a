#include "widgets/ElidedLabel.h"

#include <QEvent>

ElidedLabel::ElidedLabel(int widestChars, QWidget *parent) : QLabel(parent), m_widestChars(widestChars)
{
    setTextFormat(Qt::PlainText);
}

void ElidedLabel::SetText(const QString &text)
{
    m_text = text;
    const QFontMetrics metrics = fontMetrics();
    const QString shown = metrics.elidedText(text, Qt::ElideMiddle, metrics.averageCharWidth() * m_widestChars);
    setText(shown);
    setAccessibleName(text);
    setToolTip(shown == text ? QString() : text.toHtmlEscaped());
}

void ElidedLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        SetText(m_text);
}
