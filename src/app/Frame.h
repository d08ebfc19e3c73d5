// What lower rooms ask of the windows above them, so that none of them includes a form.
#pragma once

// The main window. In the scheduler it is hidden and only its timer and tray icon live.
class MainFrame {
 public:
    virtual ~MainFrame() = default;
    virtual void EnableTimer1(bool enabled) = 0;
    virtual void HideWindow() = 0;
    // The pointer over all windows: 0 the default, 11 the hourglass.
    virtual void ScreenMousePointer(int pointer) = 0;
};

// A Desktop window.
class DeskWindow {
 public:
    virtual ~DeskWindow() = default;
    virtual void ListMousePointer(int pointer) = 0;  // of lsvDesk
};
