// SPDX-License-Identifier: MIT
/// Form panels: the host's service "LWXPanel 2". A module describes a form by tables; the host
/// draws it, holds the values, and runs it.
///
/// The order of calls: `create`, `describe`, `hint`, `formSet` for every value, `post`, `formGet`
/// for every value, `destroy`. While `post` runs the host calls the functions of pressed buttons,
/// which may use `formGet` and `formSet`.
#pragma once

#include "hostapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define LWXPANELFUNCS_GLOBAL "LWXPanel 2"

/// An open panel, from `create` to `destroy`, at most until the activation function returns. The
/// record behind it is the host's own; null is no panel.
typedef struct LWXPanel* LWXPanelID;

/// Identifies a control, a group or a tab set within a panel. 0 is the panel itself.
typedef uintptr_t LWXPanelControlID;

/// Kind of a panel: a form keeps its values itself.
enum { LWXP_FORM = 1 };

/// One control. A row of zeros ends a table.
/// Classes: "integer", "float", "percent" (shows the fraction times 100), "angle" (shows radians in
/// degrees), "iBoolean" (a switch), "iPopChoice" (an index into a list), "vButton".
typedef struct LWXPanelControl {
    LWXPanelControlID id;
    const char* label;
    const char* control_class;
} LWXPanelControl;

/// The data type of a control's value: "integer" (int), "float" (double) or "vButton" (none).
/// A row of zeros ends a table.
typedef struct LWXPanelDataDesc {
    LWXPanelControlID id;
    const char* label;
    const char* data_type;
} LWXPanelDataDesc;

/// Called when the user presses a button. [panel, on the same thread, while `post` runs]
typedef void LWXPanelButtonFunc(LWXPanelID panel, LWXPanelControlID control);

/// Value callbacks of a panel that keeps its values outside; a form has none.
typedef void* LWXPanelGetFunc(void* user, LWXPanelControlID control);
typedef int LWXPanelSetFunc(void* user, LWXPanelControlID control, void* value);

/// What a hint says. Which fields of LWXPanelHint count is told by each kind.
enum LWXPanelHintKind {
    XpEND = 0,   ///< ends the list
    XpLABEL,     ///< `id` (0: the panel) is titled `text`
    XpGROUP_,    ///< `id` is a group of the controls `members`, shown in that order
    XpTABS_,     ///< `id` is a set of tabs, one for each group of `members`
    XpDIVADD,    ///< a divider line stands after the control `id`
    XpSTRLIST,   ///< the popup `id` offers `list`
    XpBUTNOTIFY, ///< the button `id` calls `button`
    XpENABLEMSG_ ///< `members` are usable only while the value of `id` is not 0; trying one of
                 ///< them otherwise shows `text`
};

/// One hint. Fields that its kind does not name are zero.
typedef struct LWXPanelHint {
    enum LWXPanelHintKind kind;
    LWXPanelControlID id;
    const char* text;
    const LWXPanelControlID* members; ///< ended by 0
    const char* const* list;          ///< ended by null
    LWXPanelButtonFunc* button;
} LWXPanelHint;

/// All tables, texts and lists that a module gives belong to it and must stay valid until the panel
/// is destroyed; the host may read them as long. Texts are UTF-8 without markup. The table of
/// functions is the host's; no entry is null.
typedef struct LWXPanelFuncs {
    /// Makes a panel of `type` (LWXP_FORM) with `controls`. [run]
    /// Null when there can be none: the module then ends the run as if the user had cancelled.
    LWXPanelID (*create)(int type, const LWXPanelControl* controls);

    /// Tells the types of the controls' values. [panel, before `post`] `get` and `set` are null for
    /// a form. A description that is wrong makes `post` return 0.
    void (*describe)(LWXPanelID panel, const LWXPanelDataDesc* data, LWXPanelGetFunc* get,
                     LWXPanelSetFunc* set);

    /// Gives hints on layout, labels, lists, buttons and enabling; `id` 0 is the whole panel.
    /// [panel, before `post`]
    void (*hint)(LWXPanelID panel, LWXPanelControlID id, const LWXPanelHint* hints);

    /// The address of the control's current value: an int for "integer", a double for "float", in
    /// the units of the program (fractions, radians, metres), whatever is shown. [panel]
    /// Owned by the host and valid until the next call on this panel. Null when the control has no
    /// value.
    void* (*formGet)(LWXPanelID panel, LWXPanelControlID control);

    /// Sets the control's value from the int or double at `value`, read during the call. [panel]
    void (*formSet)(LWXPanelID panel, LWXPanelControlID control, const void* value);

    /// Shows the panel and returns when the user has closed it: 1 for OK, 0 for Cancel, or when it
    /// cannot be shown. [panel, not from a button's function]
    /// The values stay readable either way.
    int (*post)(LWXPanelID panel);

    /// Releases the panel. [panel, once; the last call]
    void (*destroy)(LWXPanelID panel);
} LWXPanelFuncs;

#ifdef __cplusplus
}
#endif
