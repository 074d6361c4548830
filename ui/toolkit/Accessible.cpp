#include "ui/toolkit/Accessible.h"

#include <oleacc.h>

#include <new>

#include "ui/toolkit/LateFunction.h"
#include "ui/toolkit/WindowObject.h"

namespace tamarind {
namespace {

constexpr const wchar_t* kLibrary = L"oleacc.dll";

BSTR NewText(const std::wstring& text) {
    static const auto allocate =
        LateFunction<decltype(&SysAllocString)>(L"oleaut32.dll", "SysAllocString");
    return allocate != nullptr ? allocate(text.c_str()) : nullptr;
}

// Lies in front of the object that Windows makes for the window.
class AccessibleWindow final : public IAccessible {
public:
    AccessibleWindow(HWND window, IAccessible* standard) : m_window(window), m_standard(standard) {}
    AccessibleWindow(const AccessibleWindow&) = delete;
    AccessibleWindow& operator=(const AccessibleWindow&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (id == __uuidof(IUnknown) || id == __uuidof(IDispatch) || id == __uuidof(IAccessible)) {
            *object = static_cast<IAccessible*>(this);
            AddRef();
            return S_OK;
        }
        return m_standard->QueryInterface(id, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override {
        return static_cast<ULONG>(InterlockedIncrement(&m_references));
    }
    ULONG STDMETHODCALLTYPE Release() override {
        const LONG left = InterlockedDecrement(&m_references);
        if (left == 0) {
            delete this;
        }
        return static_cast<ULONG>(left);
    }

    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override {
        const HRESULT answer = Tell(child, &AccessibleInfo::name, name);
        return answer == S_OK ? answer : m_standard->get_accName(child, name);
    }
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override {
        const HRESULT answer = Tell(child, &AccessibleInfo::value, value);
        return answer == S_OK ? answer : m_standard->get_accValue(child, value);
    }
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override {
        const HRESULT answer = Tell(child, &AccessibleInfo::description, description);
        return answer == S_OK ? answer : m_standard->get_accDescription(child, description);
    }
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override {
        const auto info = Info(child);
        if (info && info->role != 0) {
            role->vt = VT_I4;
            role->lVal = info->role;
            return S_OK;
        }
        return m_standard->get_accRole(child, role);
    }
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override {
        const HRESULT answer = m_standard->get_accState(child, state);
        const auto info = Info(child);
        if (info && answer == S_OK && state->vt == VT_I4) {
            state->lVal |= info->state;
        }
        return answer;
    }

    // All else is as Windows has it.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        return m_standard->GetTypeInfoCount(count);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT which, LCID locale, ITypeInfo** info) override {
        return m_standard->GetTypeInfo(which, locale, info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        return m_standard->GetIDsOfNames(id, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID id, LCID locale, WORD flags,
                                     DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                                     UINT* wrongArgument) override {
        return m_standard->Invoke(member, id, locale, flags, arguments, result, exception,
                                  wrongArgument);
    }
    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override {
        return m_standard->get_accParent(parent);
    }
    HRESULT STDMETHODCALLTYPE get_accChildCount(LONG* count) override {
        return m_standard->get_accChildCount(count);
    }
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override {
        return m_standard->get_accChild(child, object);
    }
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override {
        return m_standard->get_accHelp(child, help);
    }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override {
        return m_standard->get_accHelpTopic(file, child, topic);
    }
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override {
        return m_standard->get_accKeyboardShortcut(child, shortcut);
    }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override {
        return m_standard->get_accFocus(child);
    }
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override {
        return m_standard->get_accSelection(children);
    }
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override {
        return m_standard->get_accDefaultAction(child, action);
    }
    HRESULT STDMETHODCALLTYPE accSelect(LONG flags, VARIANT child) override {
        return m_standard->accSelect(flags, child);
    }
    HRESULT STDMETHODCALLTYPE accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                          VARIANT child) override {
        return m_standard->accLocation(left, top, width, height, child);
    }
    HRESULT STDMETHODCALLTYPE accNavigate(LONG direction, VARIANT start, VARIANT* end) override {
        return m_standard->accNavigate(direction, start, end);
    }
    HRESULT STDMETHODCALLTYPE accHitTest(LONG left, LONG top, VARIANT* child) override {
        return m_standard->accHitTest(left, top, child);
    }
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
        return m_standard->accDoDefaultAction(child);
    }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT child, BSTR name) override {
        return m_standard->put_accName(child, name);
    }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override {
        return m_standard->put_accValue(child, value);
    }

private:
    ~AccessibleWindow() { m_standard->Release(); }

    // A reader may keep the object longer than the window lives.
    std::optional<AccessibleInfo> Info(const VARIANT& child) const {
        const WindowObject* const object =
            IsWindow(m_window) ? WindowObject::FromHandle(m_window) : nullptr;
        if (object == nullptr || child.vt != VT_I4) {
            return std::nullopt;
        }
        return child.lVal == CHILDID_SELF ? object->Describe() : object->DescribeChild(child.lVal);
    }
    HRESULT Tell(const VARIANT& child, std::wstring AccessibleInfo::*member, BSTR* text) const {
        const auto info = Info(child);
        if (!info || (*info.*member).empty()) {
            return S_FALSE;
        }
        *text = NewText(*info.*member);
        return *text != nullptr ? S_OK : E_OUTOFMEMORY;
    }

    const HWND m_window;
    IAccessible* const m_standard;
    LONG m_references = 1;
};

}  // namespace

std::optional<LRESULT> AnswerGetObject(HWND window, WPARAM wParam, LPARAM lParam) {
    if (static_cast<LONG>(lParam) != OBJID_CLIENT) {
        return std::nullopt;
    }
    static const auto makeStandard =
        LateFunction<decltype(&CreateStdAccessibleObject)>(kLibrary, "CreateStdAccessibleObject");
    static const auto makeAnswer =
        LateFunction<decltype(&LresultFromObject)>(kLibrary, "LresultFromObject");
    void* standard = nullptr;
    if (makeStandard == nullptr || makeAnswer == nullptr ||
        makeStandard(window, OBJID_CLIENT, __uuidof(IAccessible), &standard) != S_OK) {
        return std::nullopt;
    }
    auto* const object = new AccessibleWindow(window, static_cast<IAccessible*>(standard));
    const LRESULT answer = makeAnswer(__uuidof(IAccessible), wParam, object);
    object->Release();
    return answer;
}

void AnnounceText(HWND window, LONG part) {
    // EVENT_OBJECT_LIVEREGIONCHANGED, which older headers lack.
    constexpr DWORD kLiveRegionChanged = 0x8019;
    NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window, OBJID_CLIENT, part);
    NotifyWinEvent(kLiveRegionChanged, window, OBJID_CLIENT, part);
}

}  // namespace tamarind
