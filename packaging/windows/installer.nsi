; SPDX-FileCopyrightText: 2026 The Kotoban developers
; SPDX-License-Identifier: MIT

; The Windows installer: for one user, without administrator rights, into a folder that the program can write to. Built
; by make_installer.sh, which passes the definitions and generates the macros that list files.
;
; The folder also contains the user's files. The installer writes four kinds of files:
;   - the executable, the help and the licences belong to the program: each installation replaces them;
;   - samples belong to the user once they are installed: they are written only if there is no folder txt yet;
;   - the notes in db, db_backup and rec, each on what its folder is for, are written where they are missing, and stay;
;   - sounds are written only if there is no program yet, and removed with it if they are unchanged.
Target amd64-unicode
Unicode true
SetCompressor /SOLID lzma
; Files get the time of their installation, so that the installer is reproducible.
SetDateSave off
; A file that cannot be written ends the installation, since skipping it would leave half a program.
AllowSkipFiles off
RequestExecutionLevel user
; Signed like the program, if there is a key. If signing fails, so does the build.
!uninstfinalize '"${SIGN}" "%1"' = 0
!finalize '"${SIGN}" "%1"' = 0
ManifestDPIAware true
ManifestSupportedOS Win10
ManifestLongPathAware true

!include LogicLib.nsh
!include FileFunc.nsh
!include WinVer.nsh
!include MUI2.nsh
!include "${FILES}"

; Keeps the folder after an uninstallation, so that the next installation finds the records.
!define OWN_KEY "Software\Kotoban"
!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Kotoban"
!define PUBLISHER "The Kotoban developers"

Name "瞬記帳"
BrandingText "瞬記帳 ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Kotoban"
InstallDirRegKey HKCU "${OWN_KEY}" Folder

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey /LANG=1041 CompanyName "${PUBLISHER}"
VIAddVersionKey /LANG=1041 FileDescription "瞬記帳 セットアップ"
VIAddVersionKey /LANG=1041 FileVersion "${VERSION}"
VIAddVersionKey /LANG=1041 LegalCopyright "Copyright (c) 2026 The Kotoban developers"
VIAddVersionKey /LANG=1041 ProductName "瞬記帳"
VIAddVersionKey /LANG=1041 ProductVersion "${VERSION}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_UNWELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_ABORTWARNING

!define MUI_WELCOMEPAGE_TITLE "瞬記帳 ${VERSION} のインストール"
!define MUI_WELCOMEPAGE_TEXT "穴埋めで覚えるための学習ソフト「瞬記帳」を，このパソコンの今の利用者のために入れます。管理者の権限は要りません。$\r$\n$\r$\n前の版があるときは，プログラムと使い方の説明だけを新しくします。学習の記録，学習ファイル，利用者の名前，設定はそのまま残ります。$\r$\n$\r$\n「次へ」を押してください。"
!insertmacro MUI_PAGE_WELCOME

!define MUI_DIRECTORYPAGE_TEXT_TOP "学習の記録も学習ファイルも，このフォルダの中に入ります。$\r$\n$\r$\nこれまで zip を展開して使っていたときは，Kotoban.exe のあるフォルダを選んでください。学習の続きができます。"
!define MUI_PAGE_CUSTOMFUNCTION_PRE SkipFolderPage
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE CheckFolder
!insertmacro MUI_PAGE_DIRECTORY

!insertmacro MUI_PAGE_INSTFILES

!define MUI_FINISHPAGE_TITLE "インストールが終わりました"
!define MUI_FINISHPAGE_TEXT "これからは，スタートメニューの「瞬記帳」で始められます。$\r$\n$\r$\n学習ファイルや記録の入るフォルダは，「瞬記帳のフォルダ」で開きます。"
!define MUI_FINISHPAGE_RUN "$INSTDIR\Kotoban.exe"
!define MUI_FINISHPAGE_RUN_TEXT "瞬記帳をいま始める(&R)"
!insertmacro MUI_PAGE_FINISH

!define MUI_UNCONFIRMPAGE_TEXT_TOP "瞬記帳のプログラムと使い方の説明を削除します。$\r$\n学習の記録とその控え，学習ファイル，報告，利用者の名前，印，設定は削除しません。次のフォルダに残ります。"
!define MUI_UNCONFIRMPAGE_TEXT_LOCATION "フォルダ："
!insertmacro MUI_UNPAGE_CONFIRM

!insertmacro MUI_UNPAGE_INSTFILES

!define MUI_FINISHPAGE_TITLE "アンインストールが終わりました"
!define MUI_FINISHPAGE_TEXT "学習の記録とその控え，学習ファイル，報告，利用者の名前，印，設定は，次のフォルダに残っています。$\r$\n$\r$\n$INSTDIR$\r$\n$\r$\nもう一度インストールすると，学習の続きができます。要らないときは，このフォルダを削除してください。"
!insertmacro MUI_UNPAGE_FINISH

!insertmacro MUI_LANGUAGE Japanese
; The captions that NSIS has for Japanese are wider than their buttons.
InstallButtonText "インストール"
UninstallButtonText "削除する(&D)"

; The functions that both the installer and the uninstaller need; PREFIX is "un." for the latter.
!macro FUNCTIONS_OF PREFIX

; Asks the running program to end, as Windows does at a logout: the program completes the session and reports that it is
; ready. A program that was started from another folder is left alone.
Function ${PREFIX}AskToEnd
    StrCpy $1 0
    ${Do}
        System::Call 'user32::FindWindowExW(p 0, p r1, p 0, p 0) p.r1'
        ${If} $1 P= 0
            ${Break}
        ${EndIf}
        System::Call 'user32::IsWindowVisible(p r1) i.r2'
        ${If} $2 = 0
            ${Continue}
        ${EndIf}
        System::Call 'user32::GetWindowThreadProcessId(p r1, *i.r2)'
        System::Call 'kernel32::OpenProcess(i 0x1000, i 0, i r2) p.r3' ; PROCESS_QUERY_LIMITED_INFORMATION
        StrCpy $4 ""
        System::Call 'kernel32::QueryFullProcessImageNameW(p r3, i 0, w.r4, *i ${NSIS_MAX_STRLEN})'
        System::Call 'kernel32::CloseHandle(p r3)'
        ${If} $4 == "$INSTDIR\Kotoban.exe"
            ; WM_QUERYENDSESSION and WM_ENDSESSION with ENDSESSION_CLOSEAPP, not waiting for a program that hangs.
            System::Call 'user32::SendMessageTimeoutW(p r1, i 0x11, p 0, p 1, i 2, i 3000, *p.r5) p.r6'
            ${If} $6 P<> 0
                System::Call 'user32::SendMessageTimeoutW(p r1, i 0x16, p r5, p 1, i 2, i 3000, *p.r5)'
            ${EndIf}
            ${Break}
        ${EndIf}
    ${Loop}
FunctionEnd

; Sets $0 to 1 if the executable is in use, otherwise to 0. A running executable cannot be opened for writing.
Function ${PREFIX}IsInUse
    StrCpy $0 0
    ${If} ${FileExists} "$INSTDIR\Kotoban.exe"
        SetFileAttributes "$INSTDIR\Kotoban.exe" NORMAL
        ClearErrors
        FileOpen $1 "$INSTDIR\Kotoban.exe" a
        ${If} ${Errors}
            StrCpy $0 1
        ${Else}
            FileClose $1
        ${EndIf}
    ${EndIf}
FunctionEnd

; Returns when the program no longer runs. If it does not end, aborts; nothing has been changed by then.
Function ${PREFIX}EndProgram
    Call ${PREFIX}IsInUse
    ${If} $0 = 0
        Return
    ${EndIf}
    MessageBox MB_OKCANCEL|MB_ICONINFORMATION "瞬記帳が動いています。$\r$\n「OK」を押すと，学習を記録して瞬記帳を終わらせ，先に進みます。" /SD IDOK IDOK +2
    Abort
    ${Do}
        ${For} $R0 1 10
            Call ${PREFIX}AskToEnd
            Sleep 1000
            Call ${PREFIX}IsInUse
            ${If} $0 = 0
                Return
            ${EndIf}
        ${Next}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "瞬記帳を終わらせることができません。$\r$\n瞬記帳を終了してから「再試行」を押してください。「キャンセル」を押すと，何も変えずに終わります。" /SD IDCANCEL IDRETRY +2
        Abort
    ${Loop}
FunctionEnd

!macroend
!insertmacro FUNCTIONS_OF ""
!insertmacro FUNCTIONS_OF "un."

Function .onInit
    ${IfNot} ${AtLeastWin10}
    ${OrIfNot} ${AtLeastBuild} 17763
        MessageBox MB_OK|MB_ICONSTOP "瞬記帳が動くのは，Windows 10（バージョン 1809）以降です。" /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}
    System::Call 'kernel32::CreateMutexW(p 0, i 0, w "Local\KotobanSetup") p ?e'
    Pop $0
    ${If} $0 = 183 ; ERROR_ALREADY_EXISTS
        MessageBox MB_OK|MB_ICONEXCLAMATION "瞬記帳のセットアップは，すでに動いています。" /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}
FunctionEnd

; A program that is installed already stays in its folder, with the records.
Function SkipFolderPage
    ReadRegStr $0 HKCU "${ENTRY}" InstallLocation
    ${If} $0 == $INSTDIR
    ${AndIf} ${FileExists} "$INSTDIR\Kotoban.exe"
        Abort
    ${EndIf}
FunctionEnd

; Sets $0 to 1 if the folder is empty or missing, or one of this program, otherwise to 0. In any other folder, files of the
; program could have the names of somebody else's.
Function IsOurFolder
    StrCpy $0 1
    ${If} ${FileExists} "$INSTDIR\Kotoban.exe"
    ${OrIf} ${FileExists} "$INSTDIR\db_backup\*.*"
        Return
    ${EndIf}
    FindFirst $1 $2 "$INSTDIR\*.*"
    ${DoWhile} $2 != ""
        ${If} $2 != "."
        ${AndIf} $2 != ".."
            StrCpy $0 0
            ${Break}
        ${EndIf}
        FindNext $1 $2
    ${Loop}
    FindClose $1
FunctionEnd

; Aborts if the folder contains other files.
Function RefuseForeignFolder
    Call IsOurFolder
    ${If} $0 = 0
        MessageBox MB_OK|MB_ICONEXCLAMATION "このフォルダには，ほかのファイルがあります。空のフォルダか，瞬記帳のフォルダを選んでください。$\r$\n$\r$\n$INSTDIR" /SD IDOK
        Abort
    ${EndIf}
FunctionEnd

Function CheckFolder
    ; The page appends the name of the default folder to a chosen folder, even if that already contains the program or
    ; what an uninstallation has left.
    ${GetParent} $INSTDIR $0
    ${If} ${FileExists} "$0\Kotoban.exe"
    ${OrIf} ${FileExists} "$0\db\kotoban.splite3"
        ${IfNot} ${FileExists} "$INSTDIR\Kotoban.exe"
            StrCpy $INSTDIR $0
        ${EndIf}
    ${EndIf}
    Call RefuseForeignFolder
    ; The program always needs to write into its own folder.
    ClearErrors
    CreateDirectory "$INSTDIR"
    GetTempFileName $0 "$INSTDIR"
    ${If} ${Errors}
        MessageBox MB_OK|MB_ICONEXCLAMATION "このフォルダには書き込めません。ほかのフォルダを選んでください。$\r$\n$\r$\n$INSTDIR"
        Abort
    ${EndIf}
    Delete $0
FunctionEnd

; Writes the samples under another name and renames them, so that an existing folder txt is always complete.
Function LaySamples
    RMDir /r "$INSTDIR\txt.new"
    !insertmacro SAMPLES "txt.new"
    SetOutPath $INSTDIR
    SetOverwrite off
    !insertmacro KEYWORDS
    SetOverwrite on
    ; A virus scanner may have a new file open for a moment.
    ${For} $R0 1 20
        ClearErrors
        Rename "$INSTDIR\txt.new" "$INSTDIR\txt"
        ${IfNot} ${Errors}
            Return
        ${EndIf}
        Sleep 500
    ${Next}
    MessageBox MB_OK|MB_ICONSTOP "フォルダ txt を作れません。もう一度セットアップを行ってください。" /SD IDOK
    Abort
FunctionEnd

Function LaySounds
    SetOverwrite off
    !insertmacro SOUNDS "$INSTDIR\wav"
    SetOverwrite on
FunctionEnd

; Atomic: whatever happens, the folder contains either the old program or the new one.
Function ReplaceProgram
    SetOutPath $INSTDIR
    File "/oname=Kotoban.exe.new" "${FOLDER}/Kotoban.exe"
    ; MOVEFILE_REPLACE_EXISTING and MOVEFILE_WRITE_THROUGH
    System::Call 'kernel32::MoveFileExW(w "$INSTDIR\Kotoban.exe.new", w "$INSTDIR\Kotoban.exe", i 9) i.r0'
    ${If} $0 = 0
        Delete "$INSTDIR\Kotoban.exe.new"
        MessageBox MB_OK|MB_ICONSTOP "Kotoban.exe を書き込めません。瞬記帳を終了し，もう一度セットアップを行ってください。" /SD IDOK
        Abort
    ${EndIf}
FunctionEnd

Function EnterIntoList
    WriteRegStr HKCU "${ENTRY}" DisplayName "瞬記帳"
    WriteRegStr HKCU "${ENTRY}" DisplayVersion "${VERSION}"
    WriteRegStr HKCU "${ENTRY}" DisplayIcon "$INSTDIR\Kotoban.exe"
    WriteRegStr HKCU "${ENTRY}" Publisher "${PUBLISHER}"
    WriteRegStr HKCU "${ENTRY}" InstallLocation "$INSTDIR"
    WriteRegStr HKCU "${OWN_KEY}" Folder "$INSTDIR"
    WriteRegStr HKCU "${ENTRY}" UninstallString '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${ENTRY}" QuietUninstallString '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${ENTRY}" EstimatedSize ${KILOBYTES}
    WriteRegDWORD HKCU "${ENTRY}" NoModify 1
    WriteRegDWORD HKCU "${ENTRY}" NoRepair 1
FunctionEnd

Section
    AddSize ${KILOBYTES}
    Call RefuseForeignFolder ; again, since a silent installation has no folder page
    Call EndProgram
    SetOutPath $INSTDIR
    ; The program does not start if one of these folders is missing.
    CreateDirectory "$INSTDIR\db"
    CreateDirectory "$INSTDIR\db_backup"
    CreateDirectory "$INSTDIR\rec"
    CreateDirectory "$INSTDIR\wav"
    SetOverwrite off
    !insertmacro NOTES $INSTDIR
    SetOverwrite on
    ${IfNot} ${FileExists} "$INSTDIR\txt\*.*"
        Call LaySamples
    ${EndIf}
    ${IfNot} ${FileExists} "$INSTDIR\Kotoban.exe"
        Call LaySounds
    ${EndIf}
    !insertmacro RENEWED "$INSTDIR"
    WriteUninstaller "$INSTDIR\Uninstall.exe"
    Call ReplaceProgram
    Call EnterIntoList
    CreateShortCut "$SMPROGRAMS\瞬記帳.lnk" "$INSTDIR\Kotoban.exe"
    ; The folder is inside a hidden one, but users want to copy it, or to put study files into it.
    CreateShortCut "$SMPROGRAMS\瞬記帳のフォルダ.lnk" "$WINDIR\explorer.exe" '"$INSTDIR"'
SectionEnd

; Deletes the sound file $R1 if it is unchanged since the installation.
Function un.DeleteIfUnchanged
    FileOpen $0 "$INSTDIR\wav\$R1" r
    FileOpen $1 "$PLUGINSDIR\$R1" r
    StrCpy $2 ""
    StrCpy $3 ""
    ${Do}
        FileReadByte $0 $2
        FileReadByte $1 $3
        ${If} $2 != $3
            ${Break}
        ${EndIf}
    ${LoopUntil} $2 == "" ; the end of both
    FileClose $0
    FileClose $1
    ${If} $2 == $3
        Delete "$INSTDIR\wav\$R1"
    ${EndIf}
FunctionEnd

Section un.
    Call un.EndProgram
    Delete "$INSTDIR\Kotoban.exe"
    Delete "$INSTDIR\Kotoban.exe.new"
    !insertmacro REMOVE_RENEWED
    InitPluginsDir
    !insertmacro SOUNDS "$PLUGINSDIR"
    !insertmacro FOR_EACH_SOUND un.DeleteIfUnchanged
    SetOutPath $TEMP
    RMDir "$INSTDIR\wav"
    ; In a copy of the folder, the entries are those of the original.
    ReadRegStr $0 HKCU "${ENTRY}" InstallLocation
    ${If} $0 == $INSTDIR
        Delete "$SMPROGRAMS\瞬記帳.lnk"
        Delete "$SMPROGRAMS\瞬記帳のフォルダ.lnk"
        DeleteRegKey HKCU "${ENTRY}"
    ${EndIf}
    Delete "$INSTDIR\Uninstall.exe"
SectionEnd
