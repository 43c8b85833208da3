// A window as an object: virtual handlers for its messages and typed operations on its handle.
#pragma once

#include <windows.h>

#include <cstdint>

namespace kx {

class DeviceContext;
class Menu;
class PaintContext;

// Base of every window that the library creates or adopts. While a window is attached to an object, its
// user-data long (GWLP_USERDATA) holds the object's address, and the window's messages become calls of the
// object's handlers; 0 means that no object is attached.
//
// The layout is shared with the host, whose own window objects are handed in as parents: a table of the
// virtual operations in the order below, then five 32-bit fields. Of a host's object nothing is used but its
// handle, the second word: it is never written and none of its operations is called, so `parent` may be such
// an object everywhere.
//
// There is no virtual destructor: the handlers start at slot 0 of the table and the next free slot is 42. An
// object is therefore deleted as what it is: by a `delete this` in a final class or by an owner that knows
// the class. The base destructor leaves the window alone but for detaching itself from it and stopping its
// timer; classes that own their window destroy it in their own destructor.
//
// A handler may destroy the window and with it this object: the dispatcher does not touch the object after
// calling it. With handle 0 every operation does nothing and returns 0, false or null. Texts are
// Windows-1252. User-interface thread only.
class Window {
  public:
    // ---- virtual handlers, in the order of their slots
    // Each comment says the message and the default. x and y are relative to the client area unless said
    // otherwise, and negative left of or above it.

    // 0. Every message of a window of a registered class: calls the handlers below (see window_dispatch.cpp).
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // 1. WM_PAINT. Fills the update rectangle with the system colour COLOR_WINDOW.
    virtual void OnPaint(PaintContext& context);
    // 2. WM_ERASEBKGND. False. A window returns the default procedure's result in any case; a dialog takes
    // true for "erased".
    virtual bool OnEraseBackground(DeviceContext& context);
    // 3. WM_INITMENUPOPUP. Enables and checks the menu's items by IsCommandEnabled and IsCommandChecked.
    virtual void OnInitMenuPopup(Menu& menu);
    // 4. WM_SIZE. sizeType: SIZE_RESTORED and its kin; of the client area. Nothing.
    virtual void OnSize(UINT sizeType, int width, int height);
    // 5. WM_CREATE of a registered class, when this object was the creation parameter. Stores the handle and
    // attaches: 0, or -1 (the creation fails) when that is not possible.
    virtual LRESULT OnCreate(HWND window);
    // 6. WM_CLOSE. Destroys the window.
    virtual void OnClose();
    // 7. WM_DESTROY. Nothing. The object may delete itself here.
    virtual void OnDestroy();
    // 8. WM_NOTIFY. id: the sending control's. Answers TTN_NEEDTEXTA with GetToolTipText; returns 0.
    virtual LRESULT OnNotify(WPARAM id, NMHDR* header);
    // 9. WM_COMMAND. Offers it to OnControlCommand; when that returns 0, a control's notification (high word
    // above 1) gives its notification code, a menu command or accelerator the result of OnMenuCommand.
    virtual LRESULT OnCommand(WPARAM wParam, LPARAM lParam);
    // 10. A menu command or accelerator. 0.
    virtual LRESULT OnMenuCommand(UINT id);
    // 11. Any command, with the parameters of WM_COMMAND. 0: not handled.
    virtual LRESULT OnControlCommand(WPARAM wParam, LPARAM lParam);
    // 12. WM_KEYDOWN, 13. WM_KEYUP. True: handled, no default processing. False.
    virtual bool OnKeyDown(UINT virtualKey, LPARAM keyData);
    virtual bool OnKeyUp(UINT virtualKey, LPARAM keyData);
    // 14. WM_SETFOCUS, 15. WM_KILLFOCUS. Nothing.
    virtual void OnSetFocus();
    virtual void OnKillFocus();
    // 16. WM_TIMER with the timer's id, and the object's own timer (StartTimer) with the system time in
    // milliseconds. Nothing.
    virtual void OnTimer(UINT_PTR idOrTime);
    // 17. WM_QUERYNEWPALETTE. 0.
    virtual LRESULT OnQueryNewPalette();
    // 18. WM_PALETTECHANGED. Nothing.
    virtual void OnPaletteChanged(HWND changedBy);
    // 19. WM_HSCROLL, 20. WM_VSCROLL. code: SB_LINEUP and its kin; position: the low 16 bits of the thumb's.
    // Nothing.
    virtual void OnHScroll(int code, int position);
    virtual void OnVScroll(int code, int position);
    // 21 to 26. Mouse buttons. keys: MK_CONTROL and its kin. Nothing.
    virtual void OnLButtonDown(UINT keys, int x, int y);
    virtual void OnLButtonUp(UINT keys, int x, int y);
    virtual void OnLButtonDblClk(UINT keys, int x, int y);
    virtual void OnRButtonDown(UINT keys, int x, int y);
    virtual void OnRButtonUp(UINT keys, int x, int y);
    virtual void OnRButtonDblClk(UINT keys, int x, int y);
    // 27. WM_MOUSEMOVE. Nothing.
    virtual void OnMouseMove(int x, int y, bool leftButtonDown);
    // 28. WM_SETCURSOR. True: the cursor is set. False.
    virtual bool OnSetCursor(HWND window, UINT hitTest);
    // 29. WM_NCHITTEST, after the default procedure. x and y on the screen. defaultResult.
    virtual LRESULT OnNcHitTest(LRESULT defaultResult, int x, int y);
    // 30. WM_WINDOWPOSCHANGED. True: handled, so that no WM_SIZE and WM_MOVE follow. False.
    virtual bool OnWindowPosChanged(WINDOWPOS* position);
    // 31. WM_MOVING, 32. WM_SIZING (edge: WMSZ_LEFT and its kin): the screen rectangle may be changed.
    // Nothing.
    virtual void OnMoving(RECT* area);
    virtual void OnSizing(UINT edge, RECT* area);
    // 33. WM_MEASUREITEM. 0.
    virtual LRESULT OnMeasureItem(UINT id, MEASUREITEMSTRUCT* item);
    // 34. WM_DRAWITEM. False: nothing was drawn.
    virtual bool OnDrawItem(UINT id, DRAWITEMSTRUCT* item);
    // 35. WM_CTLCOLORSTATIC. The brush stays the handler's. Null: the system's colours.
    virtual HBRUSH OnCtlColorStatic(HDC context, HWND control);
    // 36. WM_EXITSIZEMOVE. Nothing.
    virtual void OnExitSizeMove();
    // 37. WM_GETDLGCODE. True: code (DLGC_WANTARROWS and its kin) is the answer. False.
    virtual bool OnGetDlgCode(LRESULT& code);
    // 38. WM_DEVICECHANGE. Nothing.
    virtual void OnDeviceChange(UINT event, LPARAM data);
    // 39. The tool tip of a control: a text, or with a module a string resource's id as MAKEINTRESOURCEA.
    // False: none.
    virtual bool GetToolTipText(UINT_PTR controlId, HINSTANCE& module, const char*& text);
    // 40, 41. Whether a menu's item can be used and is checked, asked when its menu opens. False.
    virtual bool IsCommandEnabled(UINT id);
    virtual bool IsCommandChecked(UINT id);

    // ---- construction; none creates a window

    explicit Window(Window* parent = nullptr) noexcept;
    // Adopts the item `id` of the dialog `parent`; handle 0 when there is none.
    Window(Window* parent, std::uint32_t id) noexcept;
    // Adopts an existing window.
    Window(HWND window, Window* parent, std::uint32_t id) noexcept;
    ~Window();
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    HWND Handle() const { return handle_; }
    // Null when there is none.
    Window* Parent() const { return parent_; }
    // The parent's handle: owner or parent of what is created, and the dialog in which items are looked up.
    HWND ParentHandle() const { return parent_ == nullptr ? nullptr : parent_->handle_; }
    // The child-window or control id; a dialog's template id.
    std::uint32_t Id() const { return id_; }
    // The procedure that Subclass has replaced; null while the window is not subclassed.
    WNDPROC ReplacedProc() const { return replacedProc_; }

    // ---- creation and attachment

    // CreateWindowExA with the parent's handle (or none) and no menu. createParam: the object that becomes
    // attached when the class is one of WindowClass (this object, as a rule); else null. False: no window,
    // handle 0. Also for the other creations: when the window was made and destroyed again meanwhile, this
    // object may be gone.
    bool Create(const char* className, const char* title, HINSTANCE module, Window* createParam, DWORD style,
                DWORD extendedStyle, int x, int y, int width, int height);
    // A child window (WS_CHILD in style) of the parent, with this object's id. Not attached; see Subclass.
    bool CreateControl(const char* className, const char* title, HINSTANCE module, DWORD style,
                       DWORD extendedStyle, int x, int y, int width, int height);
    // Writes the object's address into this window's user-data long (null detaches); false when the system
    // refuses.
    bool Attach(Window* object);
    // Puts procedure before the window's own and attaches the object. False: the window is as it was, or it
    // is subclassed already. The procedure finds the object by FromHandle and ends by CallReplacedProc.
    bool Subclass(Window* object, WNDPROC procedure);
    // Detaches and gives the window its own procedure back. Nothing when it is not subclassed.
    bool Unsubclass();
    // Passes a message on to the procedure that was replaced, or to the default one. A wrapper that deletes
    // itself keeps ReplacedProc before and calls CallWindowProcA itself.
    LRESULT CallReplacedProc(UINT message, WPARAM wParam, LPARAM lParam);
    // Destroys the window, and with it the objects that belong to windows.
    bool Destroy();
    // The object attached to a window of this library; null when there is none.
    static Window* FromHandle(HWND window);

    // ---- showing and placing (window_placement.cpp); results as the Win32 functions give them

    bool Show();
    bool Hide();
    // Returns whether the window was disabled before.
    bool Enable(bool enabled);
    bool IsValid() const;
    bool Update();
    // area null: the whole client area, erasing it; else only the rectangle, without erasing.
    bool Invalidate(const RECT* area = nullptr);
    // In the parent's client coordinates (a top-level window: the screen's), without change of order and
    // activation.
    bool MoveTo(int x, int y, int width, int height);
    bool Resize(int width, int height);
    // The client area's rectangle, and the window's on the screen. False: the rectangle is unchanged.
    bool GetClientRect(RECT& area) const;
    bool GetWindowRect(RECT& area) const;

    bool HasFocus() const;
    // The window that had the focus, or the capture, before.
    HWND SetFocus();
    HWND SetCapture();
    // Whoever has the capture.
    static bool ReleaseCapture();

    // ---- text, number and font (window_text.cpp); forms of the numbers: lib/number_text.h

    // At most size - 1 characters, always terminated; returns their number.
    int GetText(char* buffer, int size) const;
    int GetTextLength() const;
    bool SetText(const char* text);
    bool SetNumber(std::int32_t value);
    // The font stays the caller's and outlives the window.
    void SetFont(HFONT font, bool redraw);
    HFONT GetFont() const;

    // ---- scroll bars (window_scroll.cpp); V: vertical, H: horizontal

    // All 32 bits of the thumb's position while it is dragged.
    int GetVTrackPosition() const;
    int GetHTrackPosition() const;

    // ---- messages and boxes (window_messages.cpp)

    LRESULT SendMsg(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    bool PostMsg(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    // WM_USER.
    bool PostUser(WPARAM wParam, LPARAM lParam) const;
    // To the parent's window.
    bool PostToParent(UINT message, WPARAM wParam, LPARAM lParam) const;

    // A box owned by this window (by none with handle 0), as the others below: MB_OK and its kin; IDOK and
    // its kin.
    int MessageBox(const char* text, const char* caption, UINT flags) const;

    // ---- timer (window_timer.cpp)

    // One timer for each object, started anew when it runs; calls OnTimer. It ends with the object or the
    // window.
    bool StartTimer(UINT milliseconds);
    void StopTimer();

    // ---- what the suite's other windows do, and no pane of this library; each beside its kin in the files
    // named above

    // A top-level window without a title: an overlapped frame, or a bare popup. area null: the system's
    // default place.
    bool CreateFrame(const char* className, HINSTANCE module, Window* createParam, const RECT* area,
                     bool framed);

    bool ShowNormal();
    bool Maximize();
    bool BringToTop();
    bool SetForeground();
    bool BringToTopmost();
    bool ToTop();
    bool ToBottom();
    // Centres along one axis over the parent's window (without a parent: over 0, 0, 1024, 780), keeping the
    // size and the place along the other axis.
    bool CenterHorizontally();
    bool CenterVertically();

    // Style bits. They show with the next change of the frame.
    bool SetMinimizeBox(bool on);
    bool SetCaption(bool on);
    bool SetThickFrame(bool on);
    bool SetSystemMenu(bool on);
    bool SetStaticEdge(bool on);
    bool SetStyles(DWORD style, DWORD extendedStyle);

    bool SetUnsigned(std::uint32_t value);
    bool SetHex(std::uint32_t value);
    bool SetFixed(double value, int decimals);
    // value in tenths.
    bool SetTenths(std::uint32_t value);
    // value * multiplier / divisor with so many decimals.
    bool SetScaled(std::int32_t multiplier, std::int32_t divisor, int decimals, std::int32_t value);
    bool SetDuration(std::uint32_t milliseconds);
    // The number at the start of the window's text (of its first 64 characters); 0 when there is none.
    std::uint32_t GetHexText() const;
    std::int32_t GetNumberText() const;

    bool HasScrollBar(bool vertical) const;
    // A bar without need for scrolling is disabled, not hidden. The position that results is returned.
    int SetVPage(UINT page);
    int SetHPage(UINT page);
    int SetVRange(int minimum, int maximum);
    int SetHRange(int minimum, int maximum);
    int SetVPosition(int position, bool redraw);
    int SetHPosition(int position, bool redraw);
    UINT GetVPage() const;
    UINT GetHPage() const;
    int GetVPosition() const;
    int GetHPosition() const;
    int GetVMinimum() const;
    int GetHMinimum() const;

    bool PostCommand(WPARAM wParam, LPARAM lParam) const;
    LRESULT SendCommand(WPARAM wParam, LPARAM lParam) const;
    LRESULT SendDrawItem(WPARAM id, const DRAWITEMSTRUCT* item) const;
    LRESULT SendNotify(WPARAM id, const NMHDR* header) const;

    // The window takes the menu; false for no menu.
    bool SetMenu(const Menu& menu);
    // A system-wide key that sends WM_HOTKEY with the returned atom of the name as its id; 0 when the key is
    // taken.
    ATOM RegisterHotKey(const char* name, UINT modifiers, UINT virtualKey);
    bool UnregisterHotKey(ATOM atom);

    bool AskYesNo(const char* text, const char* caption, bool defaultYes) const;
    void Warn(const char* text, const char* caption) const;
    void Inform(const char* text, const char* caption) const;
    // The table of contents of an HTML Help file; true when a help window opened.
    bool ShowHelpContents(const char* helpFile) const;
    static void PostQuit();

  protected:
    // For creations other than the above.
    void SetHandle(HWND window) { handle_ = window; }
    void SetId(std::uint32_t id) { id_ = id; }

  private:
    // Takes the handle from the object of a window whose creation is refused.
    friend LRESULT CALLBACK ClassWindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    friend struct WindowLayout;  // holds the offsets to what the host shares (window.cpp)

    LRESULT DispatchInput(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT DispatchFrame(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT DispatchContent(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND handle_ = nullptr;
    Window* parent_ = nullptr;
    std::uint32_t id_ = 0;
    WNDPROC replacedProc_ = nullptr;
    UINT_PTR timerId_ = 0;
};

}  // namespace kx
