#include "ui/main/MainStatusBar.h"

#include <algorithm>
#include <array>

#include "core/text/WideText_win32.h"
#include "model/program/StringTable.h"
#include "ui/main/ControlIds.h"
#include "ui/toolkit/Accessible.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Fonts.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr Twips kDataFileSpare{90};  // by which its panel is wider than its content
constexpr int kPanelMargin = 6;      // pixels beside a panel's text
constexpr int kPictureGap = 4;       // pixels between its picture and its text
constexpr UINT kNoticeMs = 3000;
constexpr UINT kOfferMs = 30'000;  // of a restart

}  // namespace

MainStatusBar::MainStatusBar(EditorSession& session, MainWindowActions& actions)
    : m_workplace(session.Place()),
      m_dataFile(session.DataFile()),
      m_settings(session.Settings()),
      m_selection(session.Selection()),
      m_pending(session.Pending()),
      m_actions(actions) {
    m_workplace.Watchers().Add(*this);
    m_dataFile.Watchers().Add(*this);
    m_settings.Watchers().Add(*this);
    m_selection.Rows().Watchers().Add(*this);
    m_settings.Progress().SetListener(this);
}

MainStatusBar::~MainStatusBar() {
    m_settings.Progress().SetListener(nullptr);
    m_selection.Rows().Watchers().Remove(*this);
    m_settings.Watchers().Remove(*this);
    m_dataFile.Watchers().Remove(*this);
    m_workplace.Watchers().Remove(*this);
}

bool MainStatusBar::Create(HWND parent, const MainLook& look) {
    m_parent = parent;
    if (!StatusBar1.Create(parent, kIdStatusBar1, *this)) {
        return false;
    }
    ApplyLook(look);
    return true;
}

void MainStatusBar::ApplyLook(const MainLook& look) {
    m_dpi = look.dpi;
    m_pictures = look.statusPictures.Get();
    StatusBar1.SetFont(MakeMessageFont(m_dpi));
    if (cmdRestart.Handle() != nullptr) {
        cmdRestart.SetFont(MakeMessageFont(m_dpi));
    }
    ApplyLanguage();
}

void MainStatusBar::ApplyLanguage() {
    ShowDataFile();
    ShowTarget();
    ShowChanges();
    ShowCounter();
}

void MainStatusBar::SetBounds(const RECT& bounds) {
    m_bounds = bounds;
    StatusBar1.SetBounds(bounds);
    UpdateParts();
}

void MainStatusBar::UpdateParts() {
    const auto contentWidth = [this](const std::string& text) {
        return TextWidth(StatusBar1.Handle(), Widen(text)) + 2 * ScaledPixels(kPanelMargin, m_dpi);
    };
    const int width = static_cast<int>(m_bounds.right - m_bounds.left);
    int pictureWidth = 0;
    int pictureHeight = 0;
    ImageList_GetIconSize(m_pictures, &pictureWidth, &pictureHeight);
    const int dataFile = contentWidth(m_dataFile.Panel()) + pictureWidth +
                         ScaledPixels(kPictureGap, m_dpi) + ToPixels(kDataFileSpare, m_dpi).value;
    const int grip = SystemMetric(SM_CXVSCROLL, m_dpi);
    const int changes = m_changes.empty() ? 0 : contentWidth(Narrow(m_changes));
    const int counter = contentWidth(m_texts.Counter());
    // In a narrow window the panel of the data file is cut, so that the others stay visible. A
    // notice leaves it no more than its picture.
    const int first =
        m_notice ? pictureWidth + ScaledPixels(kPictureGap, m_dpi) : std::min(dataFile, width / 2);
    const int second = std::max(first, width - counter - changes - grip);
    if (m_changes.empty()) {
        StatusBar1.SetParts(std::array{first, second, -1});
    } else {
        StatusBar1.SetParts(std::array{first, second, second + counter, -1});
        StatusBar1.SetText(kChangesPart, m_changes);
    }
    PlaceRestart();
}

void MainStatusBar::ShowDataFile() {
    if (m_dataFile.Path().empty()) {
        return;
    }
    const int picture = m_dataFile.Target() == SettingsTarget::Wincmd ? 0 : 1;
    StatusBar1.SetIcon(kDataFilePart,
                       UniqueIcon(ImageList_GetIcon(m_pictures, picture, ILD_TRANSPARENT)));
    StatusBar1.SetText(kDataFilePart, Widen(m_dataFile.Panel()));
    UpdateParts();
}

void MainStatusBar::ShowTarget() {
    StatusBar1.SetText(kTargetPart, Widen(m_notice ? m_notice->text : m_settings.TargetPanel()));
}

void MainStatusBar::ShowChanges() {
    std::wstring text = Widen(m_pending.CountText());
    if (StatusBar1.Handle() != nullptr && text != m_changes) {
        m_changes = std::move(text);
        UpdateParts();
    }
}

void MainStatusBar::OnNotice(const Notice& notice) {
    m_notice = notice;
    UpdateParts();
    ShowTarget();
    if (notice.offersRestart) {
        ShowRestart();
    } else {
        cmdRestart.Show(false);
    }
    m_noticeEnd.Start(StatusBar1.Handle(), notice.offersRestart ? kOfferMs : kNoticeMs);
    AnnounceText(StatusBar1.Handle(), kTargetPart + 1);
}

void MainStatusBar::EndNotice() {
    m_noticeEnd.Stop();
    m_notice.reset();
    cmdRestart.Show(false);
    UpdateParts();
    ShowTarget();
}

// The button is made when the first notice needs it.
void MainStatusBar::ShowRestart() {
    if (cmdRestart.Handle() == nullptr) {
        const auto restart = [this] {
            EndNotice();
            m_actions.Execute(Command::FileSaveAndRestart);
        };
        if (!cmdRestart.Create(m_parent, kIdCmdRestart, restart)) {
            return;
        }
        cmdRestart.SetFont(MakeMessageFont(m_dpi));
    }
    cmdRestart.SetText(Widen(m_workplace.Text(text::kRestartTotalCommander)));
    PlaceRestart();
    cmdRestart.Show(true);
}

// At the end of the notice's panel.
void MainStatusBar::PlaceRestart() {
    if (cmdRestart.Handle() == nullptr) {
        return;
    }
    RECT bounds = StatusBar1.BoundsOfPart(kTargetPart);
    OffsetRect(&bounds, m_bounds.left, m_bounds.top);
    const int width =
        TextWidth(cmdRestart.Handle(), cmdRestart.Text()) + 4 * ScaledPixels(kPanelMargin, m_dpi);
    bounds.left = std::max<LONG>(bounds.left, bounds.right - width);
    SetWindowPos(cmdRestart.Handle(), HWND_TOP, bounds.left, bounds.top, SizeOf(bounds).cx,
                 SizeOf(bounds).cy, SWP_NOACTIVATE);
}

void MainStatusBar::ShowCounter() {
    StatusBar1.SetText(kCounterPart, Widen(m_texts.Counter()));
    UpdateParts();
}

void MainStatusBar::OnStatusPartClicked(int part) {
    if (part == kDataFilePart) {
        m_actions.Execute(Command::FileOpenDataFile);
    } else if (part == kCounterPart && m_selection.HiddenHits() > 0) {
        m_actions.Execute(Command::ViewAllKeys);
    } else if (part == kChangesPart) {
        m_actions.Execute(Command::FilePendingChanges);
    }
}

bool MainStatusBar::CreateProgress() {
    return picProgressBar.Handle() != nullptr ||
           (picProgressBar.Create(m_parent, kIdPicProgressBar) &&
            ProgressBar1.Create(picProgressBar.Handle(), kIdProgressBar1));
}

// Called in the middle of a load: it paints the bar at once and handles no other messages.
void MainStatusBar::OnProgress(const ProgressMeter& progress) {
    if (!IsWindowVisible(m_parent) || !CreateProgress()) {
        return;
    }
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    const int margin = ScaledPixels(3, m_dpi);
    const int width = static_cast<int>(m_bounds.right - m_bounds.left);
    const int height = static_cast<int>(m_bounds.bottom - m_bounds.top);
    ProgressBar1.SetBounds({margin, margin, width - margin, height - margin});
    SetWindowPos(picProgressBar.Handle(), HWND_TOP, m_bounds.left, m_bounds.top, width, height,
                 SWP_NOACTIVATE | SWP_SHOWWINDOW);
    UpdateWindow(picProgressBar.Handle());
    ProgressBar1.ShowProgress(progress.Count(), progress.Maximum());
}

void MainStatusBar::OnProgressEnd() {
    if (picProgressBar.Handle() != nullptr && IsWindowVisible(picProgressBar.Handle())) {
        ShowWindow(picProgressBar.Handle(), SW_HIDE);
        SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    }
}

}  // namespace tamarind
