#include "ui/favorites/frmOrganizeFavorites.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "core/text/WideText_win32.h"
#include "ui/toolkit/Dpi.h"
#include "ui/toolkit/Lengths.h"
#include "ui/toolkit/Palette.h"
#include "ui/toolkit/StoredPlace.h"
#include "ui/toolkit/WindowCalls.h"

namespace tamarind {
namespace {

constexpr Twips kLeastWidth{2760};
constexpr Twips kLeastHeight{4000};
constexpr Twips kColumnMargin{400};
constexpr int kListMargin = 1;    // pixels at 96 DPI, at the left and at the right
constexpr int kListDistance = 2;  // above and below the list

StoredPlace PlaceIn(const OwnSettings& settings) {
    return {Twips{settings.favoriteWindowLeft}, Twips{settings.favoriteWindowTop},
            Twips{settings.favoriteWindowWidth}, Twips{settings.favoriteWindowHeight}};
}

}  // namespace

frmOrganizeFavorites::frmOrganizeFavorites(Workplace& workplace, KeySelection& selection,
                                           FavoritesBook& favorites, const DialogStyle& style,
                                           std::function<void()> onDefinition)
    : Dialog(IDD_FRMORGANIZEFAVORITES, L"frmOrganizeFavorites", style),
      m_workplace(workplace),
      m_selection(selection),
      m_favorites(favorites),
      m_onDefinition(std::move(onDefinition)) {
    m_favorites.Watchers().Add(*this);
    m_selection.Rows().Watchers().Add(*this);
}

// Destroys the window here and not in the base class: while it is destroyed it stores its place.
frmOrganizeFavorites::~frmOrganizeFavorites() {
    m_selection.Rows().Watchers().Remove(*this);
    m_favorites.Watchers().Remove(*this);
    if (Handle() != nullptr) {
        DestroyWindow(Handle());
    }
}

void frmOrganizeFavorites::Open(HWND owner, int showCommand) {
    if (Handle() == nullptr) {
        m_favorites.SetOrganizerOpen(true);
        if (!Create(owner)) {
            m_favorites.SetOrganizerOpen(false);
            return;
        }
    }
    ShowWindow(Handle(), showCommand);
    if (showCommand != SW_SHOWNA) {
        SetActiveWindow(Handle());
    }
}

void frmOrganizeFavorites::Close() {
    if (Handle() != nullptr) {
        m_favorites.SetOrganizerOpen(false);
        DestroyWindow(Handle());
    }
}

void frmOrganizeFavorites::OnInit() {
    ListView1.Create(Handle(), IDC_ORGANIZE_LISTVIEW1, {}, *this,
                     LVS_SINGLESEL | LVS_EDITLABELS | LVS_NOCOLUMNHEADER);
    SetDirectionOf(ListView1.Handle());
    // Puts the list first in the tab order.
    SetWindowPos(ListView1.Handle(), HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    RestorePlace();
    Layout();
    OnKeyListChanged();
    Refresh();
}

std::optional<LRESULT> frmOrganizeFavorites::HandleMessage(UINT message, WPARAM wParam,
                                                           LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            // The list also passes on the notifications of the box in which a row is renamed, whose
            // number is arbitrary.
            if (HIWORD(wParam) == BN_CLICKED) {
                OnCommand(LOWORD(wParam));
            }
            return 0;
        case WM_SIZE:
            Layout();
            return 0;
        case WM_GETMINMAXINFO: {
            const SIZE least = LeastSize();
            reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize = {least.cx, least.cy};
            return 0;
        }
        case WM_DESTROY:
            StorePlace();
            return 0;
        default:
            return std::nullopt;
    }
}

void frmOrganizeFavorites::OnCommand(int id) {
    FavoritesOrganizer& organizer = m_favorites.Organizer();
    // A button that is pressed by its access key does not take the focus from the box in which a
    // row is renamed.
    ListView1.EndLabelEdit();
    switch (id) {
        case IDC_ORGANIZE_CMDUP:
            organizer.MoveUp();
            break;
        case IDC_ORGANIZE_CMDDOWN:
            organizer.MoveDown();
            break;
        case IDC_ORGANIZE_CMDDELETE:
            organizer.Delete();
            break;
        case IDC_ORGANIZE_CMDADDSEPARATOR:
            organizer.AddSeparator();
            break;
        case IDC_ORGANIZE_CMDDEFINITION:
            OnDefinition(true);
            return;
        case IDC_ORGANIZE_CMDAPPLY:
            OnApply();
            return;
        case IDOK:
            // The Enter key outside the buttons.
            OnDefinition(false);
            return;
        case IDCANCEL:
            Close();
            return;
        default:
            return;
    }
    Refresh();
}

void frmOrganizeFavorites::OnDefinition(bool beeps) {
    if (!m_workplace.IsBusy() && m_favorites.OrganizerDefinition(beeps)) {
        m_onDefinition();
    }
}

void frmOrganizeFavorites::OnApply() {
    if (m_workplace.IsBusy()) {
        return;
    }
    // A disabled Apply button would pass the focus on to the next button, Cancel.
    if (m_favorites.ApplyOrganizer() && GetFocus() == cmdApply.Handle()) {
        m_listControl.Focus();
    }
    ShowStates();
}

// A favorite that was added elsewhere appears as a new row.
void frmOrganizeFavorites::OnFavoritesChanged() {
    const auto rows = static_cast<int>(m_favorites.Organizer().Rows().size());
    if (Handle() != nullptr && rows != ListView1.RowCount()) {
        ListView1.EndLabelEdit();
        Refresh();
    }
}

void frmOrganizeFavorites::OnKeyListChanged() {
    if (Handle() != nullptr) {
        m_namesInList = m_selection.NamesInList();
        InvalidateRect(ListView1.Handle(), nullptr, FALSE);
    }
}

// Shows rows, selection and buttons as the organizer has them.
void frmOrganizeFavorites::Refresh() {
    if (Handle() == nullptr) {
        return;
    }
    const FavoritesOrganizer& organizer = m_favorites.Organizer();
    const int count = static_cast<int>(organizer.Rows().size());
    if (count != ListView1.RowCount()) {
        ListView1.SetRowCount(count);
    }
    InvalidateRect(ListView1.Handle(), nullptr, FALSE);
    if (const auto row = organizer.Selected()) {
        ListView1.SelectRow(static_cast<int>(*row));
    }
    ShowStates();
}

void frmOrganizeFavorites::ShowStates() {
    const FavoritesOrganizer& organizer = m_favorites.Organizer();
    cmdApply.Enable(organizer.IsChanged());
    for (const DialogControl* const control :
         {&m_listControl, &cmdUp, &cmdDown, &cmdDelete, &cmdDefinition, &cmdAddSeparator}) {
        control->Enable(!organizer.Rows().empty());
    }
}

void frmOrganizeFavorites::ApplyLook(const ListLook& look) {
    m_look = look;
    if (Handle() != nullptr) {
        ShowLook();
    }
}

void frmOrganizeFavorites::ShowLook() {
    ListView1.SetColors(m_look.foreground, m_look.background);
    ListView1.SetBorder(m_look.border);
    ApplyUserFont(ListView1, m_look.font, true, 0, m_dpi);
    ListView1.SetColumnMargin(ToPixels(kColumnMargin, m_dpi).value);
}

// Puts the frame along the lower edge and the buttons into its middle. Returns its upper edge.
LONG frmOrganizeFavorites::PlaceFrame(const SIZE& area) const {
    const HWND frame = Frame1.Handle();
    std::vector<std::pair<HWND, RECT>> buttons;
    RECT all{};
    for (HWND child = GetWindow(Handle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (child != frame && child != ListView1.Handle()) {
            buttons.emplace_back(child, BoundsInParent(child));
            UnionRect(&all, &all, &buttons.back().second);
        }
    }
    RECT bounds = BoundsInParent(frame);
    const int down = static_cast<int>(area.cy - bounds.bottom);
    const int across = static_cast<int>((area.cx - all.right - all.left) / 2);
    OffsetRect(&bounds, 0, down);
    SetWindowBounds(frame, {0, bounds.top, area.cx, bounds.bottom});
    for (auto& [button, place] : buttons) {
        OffsetRect(&place, across, down);
        SetWindowBounds(button, place);
    }
    return bounds.top;
}

// The list fills everything above the frame.
void frmOrganizeFavorites::Layout() {
    const HWND list = ListView1.Handle();
    if (list == nullptr) {
        return;
    }
    if (const int dpi = WindowDpi(Handle()); dpi != m_dpi) {
        m_dpi = dpi;
        ShowLook();
    }
    const SIZE area = ClientSizeOf(Handle());
    const LONG frameTop = PlaceFrame(area);
    const LONG margin = ScaledPixels(kListMargin, m_dpi);
    const LONG distance = ScaledPixels(kListDistance, m_dpi);
    ListView1.SetBounds({margin, distance, area.cx - margin, frameTop - distance});
}

void frmOrganizeFavorites::OnStretched(int clientWidth) {
    m_leastClientWidth = clientWidth;
    // Windows makes the window as wide as its new smallest size.
    SetWindowBounds(Handle(), BoundsOf(Handle()));
    Layout();
}

SIZE frmOrganizeFavorites::LeastSize() const {
    const int dpi = WindowDpi(Handle());
    const LONG border = SizeOf(BoundsOf(Handle())).cx - ClientSizeOf(Handle()).cx;
    return {std::max<LONG>(ToPixels(kLeastWidth, dpi).value, m_leastClientWidth + border),
            ToPixels(kLeastHeight, dpi).value};
}

void frmOrganizeFavorites::RestorePlace() {
    const StoredPlace stored = PlaceIn(m_workplace.OwnSettings().Values());
    SetWindowBounds(Handle(), BoundsOfPlace(stored, LeastSize()));
}

void frmOrganizeFavorites::StorePlace() {
    const StoredPlace stored = PlaceIn(m_workplace.OwnSettings().Values());
    const StoredPlace place = PlaceOfBounds(BoundsOf(Handle()), stored, LeastSize());
    OwnSettings& settings = m_workplace.OwnSettings().Values();
    settings.favoriteWindowLeft = place.left.value;
    settings.favoriteWindowTop = place.top.value;
    settings.favoriteWindowWidth = place.width.value;
    settings.favoriteWindowHeight = place.height.value;
    m_workplace.OwnSettings().WriteFavoriteWindow();
}

// Null if the list asks for a row that no longer exists.
const Favorite* frmOrganizeFavorites::FavoriteOf(int row) const {
    const auto& rows = m_favorites.Organizer().Rows();
    const auto at = static_cast<std::size_t>(row);
    return at < rows.size() ? &rows[at] : nullptr;
}

std::wstring frmOrganizeFavorites::RowText(int row) const {
    const Favorite* const favorite = FavoriteOf(row);
    return favorite != nullptr ? Widen(favorite->caption) : std::wstring();
}

RowLook frmOrganizeFavorites::LookOfRow(int row) const {
    const Favorite* const favorite = FavoriteOf(row);
    RowLook look;
    const bool isInList = favorite != nullptr && m_namesInList.HasNameFrom(favorite->name);
    look.color = isInList ? m_look.foreground : PaletteColor(COLOR_GRAYTEXT);
    return look;
}

void frmOrganizeFavorites::OnRowSelected(int row) {
    m_favorites.Organizer().Select(static_cast<std::size_t>(row));
}

bool frmOrganizeFavorites::OnListKey(WPARAM key) {
    switch (key) {
        case VK_DELETE:
            OnCommand(IDC_ORGANIZE_CMDDELETE);
            return true;
        case VK_F2:
            ListView1.EditLabel(ListView1.SelectedRow());
            return true;
        default:
            return false;
    }
}

bool frmOrganizeFavorites::OnRenameRow(int row) {
    const bool isAllowed = FavoriteOf(row) != nullptr &&
                           m_favorites.Organizer().CanRename(static_cast<std::size_t>(row));
    if (!isAllowed) {
        MessageBeep(MB_OK);
    }
    return isAllowed;
}

bool frmOrganizeFavorites::OnRowRenamed(int row, const std::wstring& text) {
    const bool isTaken =
        m_favorites.Organizer().Rename(static_cast<std::size_t>(row), Narrow(text));
    ShowStates();
    return isTaken;
}

}  // namespace tamarind
