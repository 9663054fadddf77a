// What the system's own converter knows of code page 932, character by character. modCodePage reads its tables from it
// once.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

class SystemCodePage932
{
  public:
    SystemCodePage932();
    ~SystemCodePage932();
    Q_DISABLE_COPY_MOVE(SystemCodePage932)

    /// The character of one byte or of one pair of bytes, 0 when the code page has none.
    char16_t Decode(QByteArrayView bytes) const;

    /// The one or two bytes of a character, empty when the code page has none.
    QByteArray Encode(char16_t character) const;

  private:
    void *m_decoder;
    void *m_encoder;
};
