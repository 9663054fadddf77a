// Writes a study file for other programs, of the kind that the user chooses, and shows the folder where it lies.
#pragma once

#include "files/modExport.h"
#include "platform/modSystemServices.h"

#include <QDialog>

class ElidedLabel;
class MarkList;
class QCheckBox;
class frmMsg;
class QLabel;
class QLayout;
class QRadioButton;

class frmExport : public QDialog
{
    Q_OBJECT

  public:
    /// @param marks  what the user has marked as hard; must outlive this
    /// @param reportFolder  where the exports are written
    frmExport(SystemServices &services, frmMsg &msg, const MarkList &marks, const QString &reportFolder,
              QWidget *owner);

    /// Shows the window for a study file and waits until it is left. After a fault, or when an older export is not to
    /// be replaced, it stays open.
    void Run(const QString &studyFilePath);

  private:
    void Form_Load();
    void optKind_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

    void AddControls();
    QLayout *Buttons();
    ExportKind ChosenKind() const;
    bool Write(const QString &exportPath, QByteArray *bytes);
    bool MayReplace(const QString &exportPath);

    SystemServices &m_services;
    frmMsg &m_msg;
    const MarkList &m_marks;
    QString m_reportFolder;
    QString m_studyFilePath;
    ElidedLabel *lblFile;
    QRadioButton *optText;
    QRadioButton *optAnki;
    QRadioButton *optCsv;
    QCheckBox *chkOnlyHard;
    bool m_hasHard = false; // whether the file has blanks that are marked
};
