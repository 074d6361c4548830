; The setup program: installs the editor for the present user, without asking for an administrator.
;
; tools/make_packages.py calls makensis with these definitions:
;   TARGET        amd64-unicode or x86-unicode
;   VERSION       such as 5.0.1
;   TYPE_VERSION  the version as app/WinMain.cpp registers it with the file type
;   TIME          the time that all files to install bear: the two halves of Windows's count, as 8 hexadecimal digits
;   SIZE_KB       the size of these files
;   ICON          the program's icon
;   FILES         script with the macros UnpackFiles, which unpacks the files into a folder, ForEachFile, which calls a
;                 function for each of them and for the uninstaller, and ForEachFolder, which does so for each folder
;   OUTPUT        the file to write
;
; Exit codes besides NSIS's own (0 done, 1 cancelled, 2 failed): 3, one of the files is in use.
; The uninstaller returns its own only if it is called with _?=FOLDER; otherwise it goes on in a copy of itself.

Target ${TARGET}
!include FileFunc.nsh
!include LogicLib.nsh
!include MUI2.nsh
!include WinVer.nsh
!include "${FILES}"

!define PRODUCT "Tamarind Configuration Editor"
!define PUBLISHER "The Tamarind developers"
!define PROGRAM "TamarindEditor.exe"
!define SHORTCUT "$SMPROGRAMS\${PRODUCT}.lnk"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\TamarindEditor"
; The program that opened data files before this one, and gets them back from the uninstaller.
!define FORMER_OWNER "FormerDataFileProgram"
!define CLASSES "Software\Classes"
!define FILES_NOT_WRITTEN 2
!define FILES_IN_USE 3

Name "${PRODUCT}"
BrandingText "${PRODUCT} ${VERSION}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Tamarind Editor"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
RequestExecutionLevel user
ManifestDPIAware true
ManifestSupportedOS Win7 Win8 Win8.1 Win10
SetCompressor /SOLID lzma
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${VERSION}.0"
VIFileVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "${PRODUCT}"
VIAddVersionKey "CompanyName" "${PUBLISHER}"
VIAddVersionKey "FileDescription" "Setup of ${PRODUCT}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "${PUBLISHER}. MIT license."

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_FINISHPAGE_RUN "$INSTDIR\${PROGRAM}"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Var NewFolder  ; where the files are unpacked before they take their places
Var FormerOwner
Var UsedFile   ; one that cannot be replaced; empty if there is none

!macro DefineCommonFunctions un
; Takes a path relative to the installation's folder.
Function ${un}NoteIfUsed
    Exch $0
    ${If} ${FileExists} "$INSTDIR\$0"
        ; A running program, or a help file that is being read, cannot be opened for writing.
        ClearErrors
        FileOpen $1 "$INSTDIR\$0" a
        ${If} ${Errors}
            StrCpy $UsedFile "$0"
        ${Else}
            FileClose $1
        ${EndIf}
    ${EndIf}
    Pop $0
FunctionEnd

; Ends the run before anything is changed, unless all files can be replaced.
Function ${un}RequireUnusedFiles
    ${Do}
        StrCpy $UsedFile ""
        !insertmacro ForEachFile ${un}NoteIfUsed
        ${If} $UsedFile == ""
            Return
        ${EndIf}
        ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
            "$INSTDIR\$UsedFile is in use.$\r$\n$\r$\nClose ${PRODUCT} and its help, then try again." \
            /SD IDCANCEL IDCANCEL`
            SetErrorLevel ${FILES_IN_USE}
            Abort "$UsedFile is in use."
        ${EndIf}
    ${Loop}
FunctionEnd

; Explorer learns at once of what has changed about file types.
Function ${un}TellExplorer
    System::Call 'shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)'
FunctionEnd
!macroend
!insertmacro DefineCommonFunctions ""
!insertmacro DefineCommonFunctions "un."

; ---- Installing

Function .onInit
    ${IfNot} ${AtLeastWin7}
        MessageBox MB_OK|MB_ICONSTOP "${PRODUCT} needs Windows 7 or newer." /SD IDOK
        SetErrorLevel 2
        Quit
    ${EndIf}
FunctionEnd

Function RemoveNewFolder
    ${If} $NewFolder != ""
        ; The present folder cannot be removed.
        SetOutPath "$PLUGINSDIR"
        RMDir /r "$NewFolder"
        RMDir "$INSTDIR"
    ${EndIf}
FunctionEnd

; Called when a file cannot be unpacked, too.
Function .onInstFailed
    Call RemoveNewFolder
FunctionEnd

!macro Fail TEXT CODE
    MessageBox MB_OK|MB_ICONSTOP "${TEXT}" /SD IDOK
    Call RemoveNewFolder
    SetErrorLevel ${CODE}
    Abort "${TEXT}"
!macroend
!define Fail "!insertmacro Fail"

; Removes the copy that is installed already, wherever it is. What the user has changed there stays.
Function RemoveFormerCopy
    ReadRegStr $0 HKCU "${UNINSTALL_KEY}" "InstallLocation"
    ${If} $0 == ""
    ${OrIfNot} ${FileExists} "$0\Uninstall.exe"
        Return
    ${EndIf}
    ; From a copy of its own, so that its file can be replaced; it is waited for all the same.
    CopyFiles /SILENT "$0\Uninstall.exe" "$PLUGINSDIR\Former.exe"
    ClearErrors
    ExecWait '"$PLUGINSDIR\Former.exe" /S _?=$0' $1
    ${If} ${Errors}
    ${OrIf} $1 <> 0
        ${Fail} "The version in $0 cannot be removed." ${FILES_IN_USE}
    ${EndIf}
FunctionEnd

; Takes a path relative to the installation's folder, and moves the file there.
Function PutInPlace
    Exch $0
    ${GetParent} "$INSTDIR\$0" $1
    CreateDirectory "$1"
    ${If} ${FileExists} "$INSTDIR\$0"
        ; What is still there has been changed by the user: descriptions in a data file, types, keywords, translations.
        ${GetBaseName} "$0" $2
        ${GetFileExt} "$0" $3
        StrCpy $4 "$1\$2 (changed).$3"
        StrCpy $5 1
        ${While} ${FileExists} "$4"
            IntOp $5 $5 + 1
            StrCpy $4 "$1\$2 (changed $5).$3"
        ${EndWhile}
        Rename "$INSTDIR\$0" "$4"
    ${EndIf}
    ClearErrors
    Rename "$NewFolder\$0" "$INSTDIR\$0"
    ${If} ${Errors}
        ${Fail} "$INSTDIR\$0 cannot be written." ${FILES_NOT_WRITTEN}
    ${EndIf}
    Pop $0
FunctionEnd

; The rules are those of model/FileAssociation.cpp: a newer copy of the program stays registered.
Function RegisterFileType
    ReadRegStr $0 HKCR "Fernedit\Shell\Open\Command" ""
    ReadRegStr $1 HKCR "Fernedit\Shell\Open\Command" "CurrentVersion"
    ${If} $1 == ""
        ReadRegStr $0 HKCU "${CLASSES}\Fernedit\Shell\Open\Command" ""
        ReadRegStr $1 HKCU "${CLASSES}\Fernedit\Shell\Open\Command" "CurrentVersion"
    ${EndIf}
    ${If} $1 S> "${TYPE_VERSION}"
        Return
    ${EndIf}
    ; The command is the program in quotation marks, then "%1".
    StrCpy $2 $0 "" 1
    StrCpy $2 $2 -6
    ${If} $2 != "$INSTDIR\${PROGRAM}"
    ${AndIf} ${FileExists} "$2"
        StrCpy $FormerOwner $2
    ${EndIf}
    WriteRegStr HKCU "${CLASSES}\.tmdf" "" "Fernedit"
    WriteRegStr HKCU "${CLASSES}\Fernedit" "" "Tamarind Config Data File"
    WriteRegStr HKCU "${CLASSES}\Fernedit\Shell\Open\Command" "" '"$INSTDIR\${PROGRAM}" "%1"'
    WriteRegStr HKCU "${CLASSES}\Fernedit\Shell\Open\Command" "CurrentVersion" "${TYPE_VERSION}"
    WriteRegStr HKCU "${CLASSES}\Fernedit\DefaultIcon" "" "$INSTDIR\${PROGRAM}, 1"
    Call TellExplorer
FunctionEnd

Function RegisterUninstaller
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\${PROGRAM}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "${PUBLISHER}"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" ${SIZE_KB}
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
    ${If} $FormerOwner != ""
        WriteRegStr HKCU "${UNINSTALL_KEY}" "${FORMER_OWNER}" "$FormerOwner"
    ${EndIf}
FunctionEnd

Section
    ; Everything that can fail comes before the first change: what is in use, and what the disk has no room for.
    InitPluginsDir
    Call RequireUnusedFiles
    StrCpy $NewFolder "$INSTDIR\~new"
    RMDir /r "$NewFolder"
    ClearErrors
    !insertmacro UnpackFiles "$NewFolder"
    WriteUninstaller "$NewFolder\Uninstall.exe"
    SetOutPath "$PLUGINSDIR"
    ${If} ${Errors}
        ${Fail} "The files cannot be written to $INSTDIR." ${FILES_NOT_WRITTEN}
    ${EndIf}
    Call RemoveFormerCopy
    !insertmacro ForEachFile PutInPlace
    RMDir /r "$NewFolder"
    CreateShortcut "${SHORTCUT}" "$INSTDIR\${PROGRAM}"
    Call RegisterFileType
    Call RegisterUninstaller
SectionEnd

; ---- Uninstalling

; Takes a path relative to the installation's folder.
Function un.RemoveFile
    Exch $0
    ${GetFileExt} "$0" $1
    ${If} $1 == "tmdf"
    ${OrIf} $1 == "types"
    ${OrIf} $1 == "keywords"
    ${OrIf} $1 == "lng"
        ; A file with another time than it came with holds what the user wrote: descriptions, types, keywords or
        ; translations.
        ClearErrors
        GetFileTime "$INSTDIR\$0" $2 $3
        ${IfNot} ${Errors}
            ; Not as decimal numbers: where one is negative depends on the kind of setup.
            IntFmt $2 "%08X" $2
            IntFmt $3 "%08X" $3
            ${If} "$2 $3" != "${TIME}"
                Pop $0
                Return
            ${EndIf}
        ${EndIf}
    ${EndIf}
    Delete "$INSTDIR\$0"
    Pop $0
FunctionEnd

; Takes a path relative to the installation's folder. A folder that holds something else stays.
Function un.RemoveFolder
    Exch $0
    RMDir "$INSTDIR\$0"
    Pop $0
FunctionEnd

; Where this copy opens data files it does so no longer: ROOT is HKCU or HKLM.
!macro un.ReleaseFileType ROOT
    ReadRegStr $0 ${ROOT} "${CLASSES}\Fernedit\Shell\Open\Command" ""
    ${If} $0 == '"$INSTDIR\${PROGRAM}" "%1"'
        ${If} $FormerOwner != ""
            WriteRegStr ${ROOT} "${CLASSES}\Fernedit\Shell\Open\Command" "" '"$FormerOwner" "%1"'
            WriteRegStr ${ROOT} "${CLASSES}\Fernedit\DefaultIcon" "" "$FormerOwner, 1"
        ${Else}
            DeleteRegKey ${ROOT} "${CLASSES}\Fernedit"
            ReadRegStr $1 ${ROOT} "${CLASSES}\.tmdf" ""
            ${If} $1 == "Fernedit"
                DeleteRegValue ${ROOT} "${CLASSES}\.tmdf" ""
                DeleteRegKey /ifempty ${ROOT} "${CLASSES}\.tmdf"
            ${EndIf}
        ${EndIf}
    ${EndIf}
!macroend

Function un.ReleaseFileTypes
    ReadRegStr $FormerOwner HKCU "${UNINSTALL_KEY}" "${FORMER_OWNER}"
    ${IfNot} ${FileExists} "$FormerOwner"
        StrCpy $FormerOwner ""
    ${EndIf}
    ; The program registers itself for all users if it may; then it stands there, too.
    !insertmacro un.ReleaseFileType HKLM
    ReadRegStr $0 HKLM "${CLASSES}\Fernedit\Shell\Open\Command" ""
    ${If} $0 != ""
        ; Another copy is registered for all users: it shows as soon as the user's own entry has gone.
        StrCpy $FormerOwner ""
    ${EndIf}
    !insertmacro un.ReleaseFileType HKCU
    Call un.TellExplorer
FunctionEnd

Section "un."
    Call un.RequireUnusedFiles
    Call un.ReleaseFileTypes
    Delete "${SHORTCUT}"
    !insertmacro ForEachFile un.RemoveFile
    !insertmacro ForEachFolder un.RemoveFolder
    DeleteRegKey HKCU "${UNINSTALL_KEY}"
    SetOutPath "$TEMP"
    RMDir "$INSTDIR"
SectionEnd
