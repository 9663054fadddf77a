// The small field "行：", in which a line is typed to go to. Enter goes there; Escape and going to another control of
// the window close it.
#pragma once

#include <QWidget>

class QLineEdit;

class LineField : public QWidget
{
    Q_OBJECT

  public:
    explicit LineField(QWidget *parent);

    /// Opens the field, with the focus in it. @param line  is in it, selected; @param lineCount  the largest line
    void Open(int line, int lineCount);

  Q_SIGNALS:
    /// A line was typed, 1..lineCount; a larger number counts as the last line.
    void LineChosen(int line);

    /// The field is not needed any more.
    void Left();

    /// The same, by a key that leaves the focus nowhere.
    void Closed();

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;

  private:
    void Choose();

    int m_lineCount = 0;
    QLineEdit *txtLine;
};
