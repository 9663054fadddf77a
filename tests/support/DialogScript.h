// Answers the modal windows that a test opens, in the order of the script.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QTimer>

#include <deque>
#include <functional>

class DialogScript : public QObject
{
  public:
    DialogScript()
    {
        connect(&m_timer, &QTimer::timeout, this, &DialogScript::Look);
        m_timer.start(5);
    }

    /// When the named window is open and usable, does something with it.
    void When(const QString &window, std::function<void(QWidget *)> action)
    {
        m_steps.push_back({window, std::move(action)});
    }

    /// When the named window is open and its button takes a click, clicks it.
    void Click(const QString &window, const QString &button)
    {
        m_steps.push_back({window, [button](QWidget *dialog) {
                               dialog->findChild<QAbstractButton *>(button)->click();
                           }});
    }

    bool IsDone() const
    {
        return m_steps.empty();
    }

    /// Texts of the message dialogs that were answered.
    QStringList messages;

  private:
    struct Step
    {
        QString window;
        std::function<void(QWidget *)> action;
    };

    static bool IsUsable(const QWidget *dialog)
    {
        const auto *const ok = dialog->findChild<QAbstractButton *>(QStringLiteral("cmdOK"));
        return dialog->isVisible() && (!ok || ok->isEnabled());
    }

    void Look()
    {
        QWidget *const dialog = QApplication::activeModalWidget();
        if (m_steps.empty() || !dialog || dialog->objectName() != m_steps.front().window || !IsUsable(dialog))
            return;
        if (const auto *const label = dialog->findChild<QLabel *>(QStringLiteral("lblMsg")))
            messages += label->text();
        const Step step = m_steps.front();
        m_steps.pop_front();
        step.action(dialog);
    }

    QTimer m_timer;
    std::deque<Step> m_steps;
};
