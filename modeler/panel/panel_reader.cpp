// SPDX-License-Identifier: MIT
#include "modeler/panel/panel_reader.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <fmt/format.h>

namespace modeler {

namespace {

struct ControlClass {
    std::string_view name;
    ControlKind kind;
    std::string_view data_type;
};

constexpr std::array<ControlClass, 7> classes{{
    {"integer", ControlKind::integer, "integer"},
    {"float", ControlKind::real, "float"},
    {"percent", ControlKind::percent, "float"},
    {"angle", ControlKind::angle, "float"},
    {"iBoolean", ControlKind::boolean, "integer"},
    {"iPopChoice", ControlKind::popup, "integer"},
    {"vButton", ControlKind::button, "vButton"},
}};

template <typename... Arguments>
BadDescription bad(fmt::format_string<Arguments...> text, Arguments&&... arguments)
{
    return BadDescription(fmt::format(text, std::forward<Arguments>(arguments)...));
}

template <typename Items> auto* find_by_id(Items& items, ControlId id)
{
    const auto found =
        std::find_if(items.begin(), items.end(), [&](const auto& item) { return item.id == id; });
    return found != items.end() ? &*found : nullptr;
}

/// Finds controls, groups and tab sets by their ids.
class FormIndex {
public:
    explicit FormIndex(const Form& form)
    {
        for (std::size_t i = 0; i < form.controls.size(); ++i)
            controls_.emplace(form.controls[i].id, i);
        for (const ControlGroup& group : form.groups) {
            others_.insert(group.id);
            grouped_.insert(group.members.begin(), group.members.end());
        }
        for (const TabSet& tabs : form.tab_sets)
            others_.insert(tabs.id);
    }

    /// The control of this id, or null. `form` is the form of the index, const or not.
    template <typename AnyForm>
    [[nodiscard]] auto control(AnyForm& form, ControlId id) const -> decltype(form.controls.data())
    {
        const auto found = controls_.find(id);
        return found != controls_.end() ? &form.controls[found->second] : nullptr;
    }
    /// Whether a control, a group or a tab set has the id.
    [[nodiscard]] bool taken(ControlId id) const
    {
        return controls_.contains(id) || others_.contains(id);
    }
    /// Registers the id of a new group or tab set.
    void add(ControlId id) { others_.insert(id); }
    /// Records that a control is in a group. False if it is already in one.
    [[nodiscard]] bool add_to_group(ControlId id) { return grouped_.insert(id).second; }

private:
    std::unordered_map<ControlId, std::size_t> controls_; ///< positions
    std::unordered_set<ControlId> others_;                ///< groups and tab sets
    std::unordered_set<ControlId> grouped_;               ///< controls that stand in groups
};

ControlValue zero_of(ControlKind kind)
{
    switch (kind) {
    case ControlKind::integer:
    case ControlKind::boolean:
    case ControlKind::popup:
        return 0;
    case ControlKind::real:
    case ControlKind::percent:
    case ControlKind::angle:
        return 0.0;
    case ControlKind::button:
        break;
    }
    return std::monostate();
}

/// The hint's kind as an integer: the module may have stored a value outside the enumeration, which
/// must not be read as that type.
int kind_of(const LWXPanelHint& hint) noexcept
{
    std::underlying_type_t<LWXPanelHintKind> kind{};
    static_assert(sizeof kind == sizeof hint.kind);
    std::memcpy(&kind, &hint.kind, sizeof kind);
    return static_cast<int>(kind);
}

/// Reads hints into a form, one after the other.
class HintReader {
public:
    HintReader(Form& form, const BindButton& bind) : form_(form), index_(form), bind_(bind) {}

    void read(const LWXPanelHint& hint)
    {
        switch (kind_of(hint)) {
        case XpLABEL:
            return; // labels have their own pass
        case XpGROUP_:
            return add_group(hint);
        case XpTABS_:
            return add_tabs(hint);
        case XpDIVADD:
            control(hint, "divider").divider_after = true;
            return;
        case XpSTRLIST:
            return set_choices(hint);
        case XpBUTNOTIFY:
            return set_action(hint);
        case XpENABLEMSG_:
            return add_rule(hint);
        default:
            throw bad("a hint on {:#x} is of the unknown kind {}", hint.id, kind_of(hint));
        }
    }

    void label(const LWXPanelHint& hint)
    {
        if (hint.text == nullptr)
            throw bad("the label of {:#x} has no text", hint.id);
        if (hint.id == 0)
            form_.title = hint.text;
        else if (ControlGroup* const group = find_by_id(form_.groups, hint.id))
            group->title = hint.text;
        else if (TabSet* const tabs = find_by_id(form_.tab_sets, hint.id))
            tabs->title = hint.text;
        else if (Control* const named = index_.control(form_, hint.id))
            named->label = hint.text;
        else
            throw bad("the label '{}' is for {:#x}, which is not on the panel", hint.text, hint.id);
    }

private:
    Control& control(const LWXPanelHint& hint, std::string_view what)
    {
        Control* const found = index_.control(form_, hint.id);
        if (found == nullptr)
            throw bad("a {} is for the control {:#x}, which is not on the panel", what, hint.id);
        return *found;
    }

    static std::vector<ControlId> members(const LWXPanelHint& hint, std::string_view what)
    {
        if (hint.members == nullptr)
            throw bad("the {} {:#x} has no list of members", what, hint.id);
        std::vector<ControlId> ids;
        for (const LWXPanelControlID* id = hint.members; *id != 0; ++id)
            ids.push_back(*id);
        return ids;
    }

    void check_new(const LWXPanelHint& hint, std::string_view what)
    {
        if (hint.id == 0 || index_.taken(hint.id))
            throw bad("the {} {:#x} has an id that is taken", what, hint.id);
    }

    void add_group(const LWXPanelHint& hint)
    {
        check_new(hint, "group");
        ControlGroup group{hint.id, {}, members(hint, "group")};
        for (const ControlId id : group.members) {
            if (index_.control(form_, id) == nullptr)
                throw bad("the group {:#x} names the control {:#x}, which is not on the panel",
                          hint.id, id);
            if (!index_.add_to_group(id))
                throw bad("the control {:#x} stands in groups twice", id);
        }
        form_.groups.push_back(std::move(group));
        index_.add(hint.id);
    }

    void add_tabs(const LWXPanelHint& hint)
    {
        check_new(hint, "tab set");
        TabSet tabs{hint.id, {}, members(hint, "tab set")};
        for (const ControlId id : tabs.groups)
            if (find_by_id(form_.groups, id) == nullptr)
                throw bad("the tab set {:#x} names the group {:#x}, which is not on the panel",
                          hint.id, id);
        form_.tab_sets.push_back(std::move(tabs));
        index_.add(hint.id);
    }

    void set_choices(const LWXPanelHint& hint)
    {
        Control& popup = control(hint, "list");
        if (popup.kind != ControlKind::popup)
            throw bad("a list is for '{}', which is no popup", popup.label);
        if (hint.list == nullptr)
            throw bad("the list of '{}' is missing", popup.label);
        popup.choices.clear();
        for (const char* const* text = hint.list; *text != nullptr; ++text)
            popup.choices.emplace_back(*text);
    }

    void set_action(const LWXPanelHint& hint)
    {
        Control& button = control(hint, "button function");
        if (button.kind != ControlKind::button)
            throw bad("a button function is for '{}', which is no button", button.label);
        if (hint.button == nullptr)
            throw bad("the function of the button '{}' is missing", button.label);
        button.action = bind_(hint.button, button);
    }

    void add_rule(const LWXPanelHint& hint)
    {
        const Control& controller = control(hint, "rule");
        if (controller.kind == ControlKind::button)
            throw bad("a rule asks for the value of '{}', which is a button", controller.label);
        EnableRule rule{hint.id, members(hint, "rule of"), hint.text != nullptr ? hint.text : ""};
        for (const ControlId id : rule.members)
            if (index_.control(form_, id) == nullptr)
                throw bad("the rule of '{}' names the control {:#x}, which is not on the panel",
                          controller.label, id);
        form_.rules.push_back(std::move(rule));
    }

    Form& form_;
    FormIndex index_;
    const BindButton& bind_;
};

} // namespace

Form read_controls(const LWXPanelControl* controls)
{
    Form form;
    std::unordered_set<ControlId> taken;
    if (controls == nullptr)
        throw bad("the table of controls is missing");
    for (; controls->id != 0 || controls->label != nullptr || controls->control_class != nullptr;
         ++controls) {
        if (controls->id == 0 || controls->label == nullptr || controls->control_class == nullptr)
            throw bad("row {} of the controls lacks its id, label or class",
                      form.controls.size() + 1);
        const auto known =
            std::find_if(classes.begin(), classes.end(), [&](const ControlClass& entry) {
                return entry.name == controls->control_class;
            });
        if (known == classes.end())
            throw bad("the control '{}' ({:#x}) is of the unknown class '{}'", controls->label,
                      controls->id, controls->control_class);
        if (!taken.insert(controls->id).second)
            throw bad("the control '{}' has the id {:#x}, which is taken", controls->label,
                      controls->id);
        Control control;
        control.id = controls->id;
        control.label = controls->label;
        control.kind = known->kind;
        control.value = zero_of(known->kind);
        form.controls.push_back(std::move(control));
    }
    return form;
}

void check_types(const Form& form, const LWXPanelDataDesc* data)
{
    if (data == nullptr)
        throw bad("the table of data types is missing");
    const FormIndex index(form);
    for (; data->id != 0; ++data) {
        const Control* const control = index.control(form, data->id);
        if (control == nullptr)
            throw bad("a data type is for the control {:#x}, which is not on the panel", data->id);
        const auto known =
            std::find_if(classes.begin(), classes.end(),
                         [&](const ControlClass& entry) { return entry.kind == control->kind; });
        const std::string_view type = data->data_type != nullptr ? data->data_type : "";
        if (type != known->data_type)
            throw bad("'{}' is of the class '{}', whose values are '{}', not '{}'", control->label,
                      known->name, known->data_type, type);
    }
}

void apply_hints(Form& form, const LWXPanelHint* hints, const BindButton& bind)
{
    if (hints == nullptr)
        throw bad("the list of hints is missing");
    HintReader reader(form, bind);
    for (const LWXPanelHint* hint = hints; kind_of(*hint) != XpEND; ++hint)
        reader.read(*hint);
    for (const LWXPanelHint* hint = hints; kind_of(*hint) != XpEND; ++hint)
        if (kind_of(*hint) == XpLABEL)
            reader.label(*hint);
}

void check_complete(const Form& form)
{
    for (const Control& control : form.controls)
        if (control.kind == ControlKind::popup && control.choices.empty())
            throw bad("the popup '{}' has no list", control.label);
}

} // namespace modeler
