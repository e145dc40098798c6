// SPDX-License-Identifier: MIT
#include "modeler/host/services.h"

#include <string_view>

#include "hostapi/module.h"
#include "modeler/host/activation.h"

namespace modeler {

namespace {

std::string_view line(const char* text) noexcept
{
    return text != nullptr ? std::string_view(text) : std::string_view();
}

void show_info(const char* line1, const char* line2) noexcept
{
    Activation* const activation = Activation::current();
    if (activation == nullptr)
        return;
    (void)activation->guarded(0, [&] {
        activation->front_end().info(line(line1), line(line2));
        return 0;
    });
}

void show_error(const char* line1, const char* line2) noexcept
{
    Activation* const activation = Activation::current();
    if (activation == nullptr)
        return;
    (void)activation->guarded(0, [&] {
        activation->result().errors.push_back({std::string(line(line1)), std::string(line(line2))});
        activation->front_end().error(line(line1), line(line2));
        return 0;
    });
}

int ask(const char* title, const char* line1, const char* line2) noexcept
{
    Activation* const activation = Activation::current();
    if (activation == nullptr)
        return 0;
    return activation->guarded(0, [&] {
        return activation->front_end().ask(line(title), line(line1), line(line2)) ? 1 : 0;
    });
}

int count_maps(LWID type) noexcept
{
    Activation* const activation = Activation::current();
    if (activation == nullptr)
        return 0;
    return activation->guarded(
        0, [&] { return static_cast<int>(activation->catalog().names(*activation, type).size()); });
}

const char* map_name(LWID type, int index) noexcept
{
    Activation* const activation = Activation::current();
    if (activation == nullptr || index < 0)
        return nullptr;
    return activation->guarded(static_cast<const char*>(nullptr), [&]() -> const char* {
        const auto names = activation->catalog().names(*activation, type);
        const auto i = static_cast<std::size_t>(index);
        return i < names.size() ? names[i] : nullptr;
    });
}

} // namespace

LWMessageFuncs* message_functions() noexcept
{
    static LWMessageFuncs table{&show_info, &show_error, &ask};
    return &table;
}

LWObjectFuncs* object_functions() noexcept
{
    static LWObjectFuncs table{&count_maps, &map_name};
    return &table;
}

void* look_up_service(const char* service, int use_mode) noexcept
{
    const std::string_view name = line(service);
    if (use_mode != GLOBAL_USE_TRANSIENT)
        return nullptr;
    if (name == LWMESSAGEFUNCS_GLOBAL)
        return message_functions();
    if (name == LWOBJECTFUNCS_GLOBAL)
        return object_functions();
    if (name == LWXPANELFUNCS_GLOBAL)
        return panel_functions();
    if (name == LWMONITORFUNCS_GLOBAL)
        return monitor_functions();
    return nullptr;
}

} // namespace modeler
