// SPDX-License-Identifier: MIT
#include "modeler/panel/panels.h"

#include <cstdint>
#include <new>
#include <utility>

#include <fmt/format.h>

#include "modeler/form_panel.h"
#include "modeler/host/activation.h"
#include "modeler/host/services.h"
#include "modeler/panel/panel_reader.h"

namespace modeler {

namespace {

Control* find_control(Panel& panel, LWXPanelControlID id) noexcept
{
    for (Control& control : panel.form->controls)
        if (control.id == id)
            return &control;
    return nullptr;
}

/// Captures the exception of a button callback, to be rethrown after the run, and aborts the press.
[[noreturn]] void fail_press(const std::string& label, std::string_view problem)
{
    Activation& activation = *Activation::current();
    const std::string step = fmt::format("button '{}'", label);
    activation.capture(
        std::make_exception_ptr(ModuleError(activation.module_file(), step, problem)));
    throw ModuleError(activation.module_file(), step, problem);
}

/// Calls a module's button callback. Exceptions of the module must not propagate through the front
/// end, so they are replaced by one known exception.
std::function<void()> bind_button(LWXPanelID panel, LWXPanelButtonFunc* function,
                                  const Control& button)
{
    return [panel, function, id = button.id, label = button.label] {
        try {
            function(panel, id);
        } catch (const std::bad_alloc&) {
            fail_press(label, "the command ran out of memory; nothing was changed");
        } catch (const std::exception& problem) {
            fail_press(label, problem.what());
        } catch (...) {
            fail_press(label, "the command failed with an exception of an unknown kind");
        }
    };
}

/// Applies a description to a panel. An invalid one is reported, and the panel is not shown.
/// Nothing more is read then: only the first error is reported, and a module that continues after
/// running out of memory must not cause further allocations.
template <typename Read> void read_into(LWXPanelID handle, Read read) noexcept
{
    Activation* const activation = Activation::current();
    Panel* const panel = activation != nullptr ? activation->panels().find(handle) : nullptr;
    if (panel == nullptr || panel->faulty)
        return;
    const bool good = activation->guarded(false, [&] {
        try {
            if (panel->shown)
                throw BadDescription("the panel is described anew while it is shown");
            read(*panel->form);
            return true;
        } catch (const BadDescription& problem) {
            activation->capture_error("panel", problem.what());
            return false;
        }
    });
    panel->faulty = !good;
}

LWXPanelID create(int type, const LWXPanelControl* controls) noexcept
{
    Activation* const activation = Activation::current();
    if (activation == nullptr)
        return nullptr;
    return activation->guarded(LWXPanelID{}, [&]() -> LWXPanelID {
        try {
            if (type != LWXP_FORM)
                throw BadDescription(
                    fmt::format("a panel of the type {} is asked for; there are forms ({}) only",
                                type, static_cast<int>(LWXP_FORM)));
            return activation->panels().add(read_controls(controls));
        } catch (const BadDescription& problem) {
            activation->capture_error("panel", problem.what());
            return nullptr;
        }
    });
}

void describe(LWXPanelID handle, const LWXPanelDataDesc* data, LWXPanelGetFunc* get,
              LWXPanelSetFunc* set) noexcept
{
    read_into(handle, [&](Form& form) {
        if (get != nullptr || set != nullptr)
            throw BadDescription("a form keeps its values itself and takes no value functions");
        check_types(form, data);
    });
}

void hint(LWXPanelID handle, LWXPanelControlID, const LWXPanelHint* hints) noexcept
{
    read_into(handle, [&](Form& form) {
        apply_hints(form, hints, [&](LWXPanelButtonFunc* function, const Control& button) {
            return bind_button(handle, function, button);
        });
    });
}

void* form_get(LWXPanelID handle, LWXPanelControlID id) noexcept
{
    Activation* const activation = Activation::current();
    Panel* const panel = activation != nullptr ? activation->panels().find(handle) : nullptr;
    Control* const control = panel != nullptr ? find_control(*panel, id) : nullptr;
    if (control == nullptr)
        return nullptr;
    if (int* const number = std::get_if<int>(&control->value))
        return number;
    return std::get_if<double>(&control->value);
}

void form_set(LWXPanelID handle, LWXPanelControlID id, const void* value) noexcept
{
    Activation* const activation = Activation::current();
    Panel* const panel = activation != nullptr ? activation->panels().find(handle) : nullptr;
    Control* const control = panel != nullptr ? find_control(*panel, id) : nullptr;
    if (control == nullptr || value == nullptr)
        return;
    if (int* const number = std::get_if<int>(&control->value))
        *number = *static_cast<const int*>(value);
    else if (double* const real = std::get_if<double>(&control->value))
        *real = *static_cast<const double*>(value);
}

int post(LWXPanelID handle) noexcept
{
    Activation* const activation = Activation::current();
    Panel* const panel = activation != nullptr ? activation->panels().find(handle) : nullptr;
    if (panel == nullptr || panel->shown)
        return 0;
    read_into(handle, [](const Form& form) { check_complete(form); });
    if (panel->faulty)
        return 0;
    panel->shown = true;
    FormPanel model(*panel->form);
    const bool confirmed =
        activation->guarded(false, [&] { return activation->front_end().run_panel(model); });
    panel->shown = false;
    if (panel->release)
        panel->form.reset();
    if (!confirmed)
        activation->result().panel_cancelled = true;
    return confirmed ? 1 : 0;
}

void destroy(LWXPanelID handle) noexcept
{
    Activation* const activation = Activation::current();
    Panel* const panel = activation != nullptr ? activation->panels().find(handle) : nullptr;
    if (panel == nullptr)
        return;
    if (panel->shown)
        panel->release = true; // by one of its own buttons, while the front end works on it
    else
        panel->form.reset();
}

} // namespace

LWXPanelID Panels::add(Form form)
{
    panels_.emplace_back().form = std::move(form);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a handle is a number to us, never an address
    return reinterpret_cast<LWXPanelID>(static_cast<std::uintptr_t>(panels_.size()));
}

Panel* Panels::find(LWXPanelID handle) noexcept
{
    const auto number = reinterpret_cast<std::uintptr_t>(handle);
    if (number == 0 || number > panels_.size() || !panels_[number - 1].form)
        return nullptr;
    return &panels_[number - 1];
}

LWXPanelFuncs* panel_functions() noexcept
{
    static LWXPanelFuncs table{&create, &describe, &hint, &form_get, &form_set, &post, &destroy};
    return &table;
}

} // namespace modeler
