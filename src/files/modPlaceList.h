// Where users have stopped, in the list "ListPlace.txt": one entry for each file that a user has studied, the one
// studied last at the end.
//
//     user TAB title of the study file TAB line at the top of the page
#pragma once

#include <QString>

class PlaceList
{
  public:
    explicit PlaceList(const QString &path);

    /// The user who studied last; empty when nobody has.
    QString LastUser() const;

    /// The title of the file that a user studied last; empty when there is none.
    QString LastTitle(const QString &userName) const;

    /// The line, 1-based, at which a user stopped in a file; 0 when it is not known.
    int Line(const QString &userName, const QString &title) const;

    /// Writes where a user stops. All other lines stay as they are, those that are no entries too.
    /// @return false on failure; message then holds the whole of it for the user, and the list is as it was
    bool Write(const QString &userName, const QString &title, int line, QString *message) const;

  private:
    QString m_path;
};
