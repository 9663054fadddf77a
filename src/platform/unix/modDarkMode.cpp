// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modDarkMode.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString PortalPath = u"/org/freedesktop/portal/desktop"_s;
const QString SettingsInterface = u"org.freedesktop.portal.Settings"_s;
const QString Group = u"org.freedesktop.appearance"_s;
const QString Key = u"color-scheme"_s;

/// Whether a value of the setting means dark; 2 is light, and 0 is no preference.
bool MeansDark(QVariant value)
{
    constexpr uint dark = 1;
    // Read wraps the value in a second variant.
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toUInt() == dark;
}

} // namespace

/// The setting of the desktop portal (org.freedesktop.portal.Settings). Qt has a connection to the
/// session bus in any case, and nothing here waits for an answer.
class DarkMode::Source : public QObject
{
    Q_OBJECT

  public:
    explicit Source(DarkMode *owner) : m_owner(owner)
    {
        qRegisterMetaType<QDBusVariant>(); // Qt looks up the types of the slot by their names
        QDBusConnection bus = QDBusConnection::sessionBus();
        // From any sender: Qt would wait for the bus to tell which one has the portal's name.
        bus.connect(QString(), PortalPath, SettingsInterface, u"SettingChanged"_s, this,
                    SLOT(portal_SettingChanged(QString, QString, QDBusVariant)));
        QDBusMessage read = QDBusMessage::createMethodCall(u"org.freedesktop.portal.Desktop"_s, PortalPath,
                                                           SettingsInterface, u"Read"_s);
        read << Group << Key;
        auto *const answer = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
        connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
            if (!answer->isError())
                Set(MeansDark(answer->reply().arguments().value(0)));
            answer->deleteLater();
        });
    }

    bool isDark = false;

  private Q_SLOTS:
    void portal_SettingChanged(const QString &group, const QString &key, const QDBusVariant &value)
    {
        if (group == Group && key == Key)
            Set(MeansDark(value.variant()));
    }

  private:
    void Set(bool isDarkNow)
    {
        if (std::exchange(isDark, isDarkNow) != isDarkNow)
            Q_EMIT m_owner->Changed();
    }

    DarkMode *m_owner;
};

DarkMode::DarkMode() : m_source(std::make_unique<Source>(this)) {}

DarkMode::~DarkMode() = default;

bool DarkMode::IsDark() const
{
    return m_source->isDark;
}

#include "modDarkMode.moc"
