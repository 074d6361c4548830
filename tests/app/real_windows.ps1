# Uses the portable package on a real Windows as its user would: unpacks it, changes a value by keys, saves, closes.
# Needs Windows PowerShell and a desktop that somebody is logged on to; nobody may type meanwhile.
#
#   powershell -NoProfile -ExecutionPolicy Bypass -File tests\app\real_windows.ps1 [-Packages FOLDER] [-Picture FILE]
#
# Packages: where ./package has put its packages, dist if it is not given.
# Picture: where a picture of the screen goes if something is wrong.
#
# Exits with 1 and says what is wrong. Everything is in a temporary folder; Total Commander's entry in the registry
# is put back at the end. As every start of the program does, it makes this copy the one that opens .tmdf files.
#
# This script has not been tried yet: the machines that the program is built on have no Windows.
param(
    [string] $Packages = '',
    [string] $Picture = ''
)
Set-StrictMode -Version 2.0
$ErrorActionPreference = 'Stop'
$ProgressPreference = 'SilentlyContinue'
$root = Split-Path (Split-Path $PSScriptRoot)
if (-not $Packages) {
    $Packages = Join-Path $root 'dist'
}

Add-Type -AssemblyName System.Windows.Forms
Add-Type -AssemblyName System.Drawing
# The compiler that comes with Windows knows no newer C# than 5.
Add-Type -IgnoreWarnings -TypeDefinition @'
using System;
using System.Runtime.InteropServices;
using System.Text;

public static class OtherWindows {
    [StructLayout(LayoutKind.Sequential)]
    public struct ThreadState {
        public int Size, Flags;
        public IntPtr Active, Focus, Capture, MenuOwner, MoveSize, Caret;
        public int CaretLeft, CaretTop, CaretRight, CaretBottom;
    }
    [DllImport("user32.dll")] static extern bool GetGUIThreadInfo(uint thread, ref ThreadState state);
    [DllImport("user32.dll")] static extern uint GetWindowThreadProcessId(IntPtr window, out uint process);
    [DllImport("user32.dll")] static extern int GetDlgCtrlID(IntPtr window);
    [DllImport("user32.dll")] static extern bool IsWindowVisible(IntPtr window);
    [DllImport("user32.dll")] static extern bool SetForegroundWindow(IntPtr window);
    [DllImport("user32.dll")] static extern void mouse_event(uint flags, int x, int y, uint data, UIntPtr extra);
    [DllImport("user32.dll")] public static extern IntPtr GetForegroundWindow();
    [DllImport("user32.dll", CharSet = CharSet.Unicode, ExactSpelling = true)]
    static extern IntPtr FindWindowExW(IntPtr parent, IntPtr after, string className, string text);
    [DllImport("user32.dll", CharSet = CharSet.Unicode, ExactSpelling = true)]
    static extern IntPtr SendMessageTimeoutW(IntPtr window, uint message, IntPtr wParam, StringBuilder lParam,
                                             uint flags, uint milliseconds, out IntPtr result);

    // A shown window of that class and process, or zero.
    public static IntPtr Find(string className, int process) {
        IntPtr found = IntPtr.Zero;
        do {
            found = FindWindowExW(IntPtr.Zero, found, className, null);
        } while (found != IntPtr.Zero && (ProcessOf(found) != process || !IsWindowVisible(found)));
        return found;
    }
    public static int ProcessOf(IntPtr window) {
        uint process;
        GetWindowThreadProcessId(window, out process);
        return (int)process;
    }
    // The control with the focus of the thread that the window belongs to, or zero.
    static IntPtr FocusBeside(IntPtr window) {
        uint process;
        ThreadState state = new ThreadState();
        state.Size = Marshal.SizeOf(state);
        GetGUIThreadInfo(GetWindowThreadProcessId(window, out process), ref state);
        return state.Focus;
    }
    public static int IdOfFocus(IntPtr window) {
        return GetDlgCtrlID(FocusBeside(window));
    }
    public static string TextOfFocus(IntPtr window) {
        return TextOf(FocusBeside(window));
    }
    public static string TextOf(IntPtr window) {
        const uint WM_GETTEXT = 0x000D;
        const uint SMTO_ABORTIFHUNG = 0x0002;
        IntPtr length;
        StringBuilder text = new StringBuilder(512);
        SendMessageTimeoutW(window, WM_GETTEXT, (IntPtr)text.Capacity, text, SMTO_ABORTIFHUNG, 5000, out length);
        return text.ToString();
    }
    // Windows lets a process take the foreground that has sent the last input. A mouse that moves by nothing is enough.
    public static void BringForward(IntPtr window) {
        const uint MOUSEEVENTF_MOVE = 0x0001;
        if (GetForegroundWindow() != window) {
            mouse_event(MOUSEEVENTF_MOVE, 0, 0, 0, UIntPtr.Zero);
            SetForegroundWindow(window);
        }
    }
}
'@

# The numbers of controls in ui/main/ControlIds.h.
$tree = 1009
$list = 1010
$inplaceEdit = 1014

$totalCommanderKey = 'HKCU:\Software\Ghisler\Total Commander'
$iniFileName = 'IniFileName'
# One byte is one character, so that a text is as good as its bytes.
$bytesAsText = [System.Text.Encoding]::GetEncoding(28591)

$process = $null
$window = [IntPtr]::Zero

function Read-Bytes([string] $path) {
    return $bytesAsText.GetString([System.IO.File]::ReadAllBytes($path))
}

# What is seen from outside, for messages.
function Get-State {
    if ($process.HasExited) {
        return "The program has ended with $($process.ExitCode)."
    }
    $front = [OtherWindows]::GetForegroundWindow()
    return "In front is '$([OtherWindows]::TextOf($front))' of process $([OtherWindows]::ProcessOf($front)), " +
        "the editor is process $($process.Id), its focus is on control $([OtherWindows]::IdOfFocus($window))."
}

# Conditions see the names that are used in here: those of the script must be others.
function Wait-Until([string] $what, [scriptblock] $condition) {
    $clock = [System.Diagnostics.Stopwatch]::StartNew()
    while (-not (& $condition)) {
        if ($clock.ElapsedMilliseconds -gt 15000) {
            throw "Not within 15 seconds: $what. $(Get-State)"
        }
        Start-Sleep -Milliseconds 50
    }
    Write-Host "  ok: $what"
}

# Types into the editor, and never into anything else. The form is that of SendKeys.
function Send-Keys([string] $keys) {
    if ([OtherWindows]::GetForegroundWindow() -ne $window) {
        throw "The keys $keys would go to another window. $(Get-State)"
    }
    [System.Windows.Forms.SendKeys]::SendWait($keys)
}

function Wait-ForFocus([string] $what, [int] $control) {
    Wait-Until $what { [OtherWindows]::IdOfFocus($window) -eq $control }
}

# Every byte counts. A file that is being replaced cannot be read for a moment.
function Test-Bytes([string] $path, [string] $bytes) {
    try {
        return [string]::CompareOrdinal((Read-Bytes $path), $bytes) -eq 0
    } catch [System.IO.IOException], [System.UnauthorizedAccessException] {
        return $false
    }
}

function Save-Picture {
    $screen = [System.Windows.Forms.SystemInformation]::VirtualScreen
    $bitmap = New-Object System.Drawing.Bitmap $screen.Width, $screen.Height
    $graphics = [System.Drawing.Graphics]::FromImage($bitmap)
    $graphics.CopyFromScreen($screen.Location, [System.Drawing.Point]::Empty, $screen.Size)
    $bitmap.Save($Picture, [System.Drawing.Imaging.ImageFormat]::Png)
}

$status = 0
$folder = Join-Path ([System.IO.Path]::GetTempPath()) ('tamarind_' + [Guid]::NewGuid().ToString('N'))
$hadKey = Test-Path $totalCommanderKey
$former = $null
if ($hadKey) {
    $former = (Get-Item $totalCommanderKey).GetValue($iniFileName, $null, 'DoNotExpandEnvironmentNames')
}
try {
    $archives = @(Get-ChildItem -Path $Packages -Filter '*-x64-portable.zip')
    if ($archives.Count -ne 1) {
        throw "There is not one portable package for 64 bits in $Packages but $($archives.Count)."
    }
    $programFolder = Join-Path $folder 'program'
    $settingsFolder = Join-Path $folder 'settings'
    [void](New-Item -ItemType Directory -Path $settingsFolder)
    Expand-Archive -LiteralPath $archives[0].FullName -DestinationPath $programFolder
    $settings = Join-Path $settingsFolder 'Wincmd.ini'
    Copy-Item -LiteralPath (Join-Path $root 'samples\Wincmd.ini') -Destination $settings
    $before = Read-Bytes $settings

    # Where Total Commander itself says which file it uses.
    if (-not $hadKey) {
        [void](New-Item -Path $totalCommanderKey -Force)
    }
    Set-ItemProperty -LiteralPath $totalCommanderKey -Name $iniFileName -Value $settings

    # With a data file, as for a double click on it: then nothing is asked at the first start, whatever the language.
    $start = New-Object System.Diagnostics.ProcessStartInfo
    $start.FileName = Join-Path $programFolder 'TamarindEditor.exe'
    $start.Arguments = '"' + (Join-Path $programFolder 'Data Files\tc all keys english.tmdf') + '"'
    $start.UseShellExecute = $false
    $process = [System.Diagnostics.Process]::Start($start)

    Wait-Until 'the window is shown' {
        $script:window = [OtherWindows]::Find('frmMain', $process.Id)
        $window -ne [IntPtr]::Zero
    }
    # The temporary folder may have a short name in front.
    $end = (Split-Path $folder -Leaf) + '\settings\Wincmd.ini'
    Wait-Until 'its title names the settings file' { [OtherWindows]::TextOf($window).EndsWith($end) }
    Wait-Until 'it is in front' {
        [OtherWindows]::BringForward($window)
        [OtherWindows]::GetForegroundWindow() -eq $window
    }
    Wait-ForFocus 'the tree has the focus' $tree

    Send-Keys '{TAB}'
    Wait-ForFocus 'Tab leads to the list' $list
    Send-Keys '{ENTER}'
    Wait-ForFocus 'Enter opens the box over the first key' $inplaceEdit
    Wait-Until 'the box has a name and a value' { [OtherWindows]::TextOfFocus($window) -like '?*=?*' }
    $line = [OtherWindows]::TextOfFocus($window)
    $lines = $before -split "`r`n"
    $places = @(0..($lines.Count - 1) | Where-Object { $lines[$_] -ceq $line })
    if ($places.Count -ne 1) {
        throw "The box shows '$line', which is $($places.Count) times in the settings file."
    }
    $lines[$places[0]] = ($line -split '=')[0] + '=4711'
    $after = $lines -join "`r`n"

    # The value is selected, so that typing replaces it.
    Send-Keys '4711{ENTER}'
    Wait-ForFocus 'Enter takes the value' $list
    Wait-Until 'the title has the mark of a change' { [OtherWindows]::TextOf($window).EndsWith("$end *") }
    if (-not (Test-Bytes $settings $before)) {
        throw 'The settings file was changed before the save.'
    }
    Send-Keys '^s'
    Wait-Until "the save changes the line '$line' and no other byte" { Test-Bytes $settings $after }
    Wait-Until 'the title has none' { [OtherWindows]::TextOf($window).EndsWith($end) }
    $backups = Join-Path $settingsFolder 'Wincmd.ini backups'
    Wait-Until 'the only backup is the file as it was' {
        $found = @(Get-ChildItem -LiteralPath $backups -ErrorAction SilentlyContinue)
        $found.Count -eq 1 -and (Test-Bytes $found[0].FullName $before)
    }

    Send-Keys '%{F4}'
    Wait-Until 'Alt+F4 closes it without a question' { $process.HasExited }
    if ($process.ExitCode -ne 0) {
        throw "The program ended with $($process.ExitCode)."
    }
    if (-not (Test-Bytes $settings $after)) {
        throw 'Closing changed the settings file.'
    }
    if (-not (Test-Path -LiteralPath (Join-Path $programFolder 'tamarind editors.ini'))) {
        throw "The program's own settings are not beside it."
    }
    $names = @(Get-ChildItem -LiteralPath $settingsFolder | ForEach-Object { $_.Name } | Sort-Object)
    if (($names -join '|') -cne 'Wincmd.ini|Wincmd.ini backups') {
        throw "Beside the settings file is more than its backups: $($names -join ', ')."
    }
    Write-Host 'No faults'
} catch {
    $status = 1
    Write-Host "FAULT: $_"
    Write-Host $_.InvocationInfo.PositionMessage
    if ($Picture) {
        try { Save-Picture } catch { Write-Host "No picture: $_" }
    }
} finally {
    if ($null -ne $process -and -not $process.HasExited) {
        $process.Kill()
        $process.WaitForExit()
    }
    if ($null -ne $former) {
        Set-ItemProperty -LiteralPath $totalCommanderKey -Name $iniFileName -Value $former
    } else {
        Remove-ItemProperty -LiteralPath $totalCommanderKey -Name $iniFileName -ErrorAction SilentlyContinue
    }
    if (-not $hadKey) {
        Remove-Item -LiteralPath $totalCommanderKey -ErrorAction SilentlyContinue
    }
    Remove-Item -LiteralPath $folder -Recurse -Force -ErrorAction SilentlyContinue
}
exit $status
