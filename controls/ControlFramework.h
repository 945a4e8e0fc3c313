// The shared shape of the toolkit's window procedures: each control kind
// keeps its state in a record attached to its window (GWLP_USERDATA), and a
// thin window procedure creates, finds and destroys that record around the
// kind's own message handler.
#pragma once

#include <windows.h>

#include <new>
#include <type_traits>

#include "controls/ControlRecord.h"

// A control kind's message handler; it calls DefWindowProcA itself for what
// it leaves alone.
typedef LRESULT (*ControlHandler)(ControlRecord* record, HWND window, UINT message, WPARAM wParam,
                                  LPARAM lParam);

// How one control kind makes, serves and frees its record.
struct ControlKind {
    // A new record with the kind's defaults, or null when memory is short.
    ControlRecord* (*create)();
    // Frees the kind's own resources, runs ReleaseControlRecord, frees the record.
    void (*destroy)(ControlRecord* record);
    ControlHandler handle;
};

// Window procedure body shared by every toolkit class. A record passed in
// lpCreateParams is adopted as is (it must come from the kind's create);
// otherwise the kind makes a fresh one. Without a record the window behaves
// as a default window. The record is destroyed at WM_NCDESTROY, which the
// handler never sees.
LRESULT ControlWindowProc(const ControlKind& kind, HWND window, UINT message, WPARAM wParam,
                          LPARAM lParam);

// The record of a toolkit control, or null when the window is not of the
// named class (compared case-sensitively) or has no record.
ControlRecord* FindControl(HWND window, const char* className);

// Registers one toolkit class (arrow or other stock cursor, FaceBrush
// background, 4 window extra bytes). Always returns 1: a failure shows later,
// when a window of the class is created.
int RegisterControlClass(HINSTANCE instance, const char* className, LPCSTR cursor,
                         WNDPROC windowProc);

// Creates a visible toolkit child window in code and returns its window;
// *record receives its record (null when either could not be made).
HWND CreateControlWindow(DWORD exStyle, const char* className, int x, int y, int width, int height,
                         HWND parent, int id, ControlRecord** record);

// Record kinds put a ControlRecord named `head` first, so a head pointer and
// a record pointer are interchangeable.
template <class Record>
Record* RecordOf(ControlRecord* head) {
    static_assert(std::is_standard_layout<Record>::value, "records must be plain");
    return reinterpret_cast<Record*>(head);
}

template <class Record>
ControlRecord* NewControlRecord() {
    Record* record = new (std::nothrow) Record;
    return record != nullptr ? &record->head : nullptr;
}

// Destruction for kinds that own nothing beyond the common head.
template <class Record>
void DeleteControlRecord(ControlRecord* head) {
    ReleaseControlRecord(head);
    delete RecordOf<Record>(head);
}

// CreateControlWindow for a known record kind.
template <class Record>
HWND CreateControl(DWORD exStyle, const char* className, int x, int y, int width, int height,
                   HWND parent, int id, Record** record) {
    ControlRecord* head = nullptr;
    HWND window = CreateControlWindow(exStyle, className, x, y, width, height, parent, id, &head);
    *record = head != nullptr ? RecordOf<Record>(head) : nullptr;
    return window;
}
