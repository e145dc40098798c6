// SPDX-License-Identifier: MIT
#include "modeler/module.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <new>
#include <span>
#include <utility>

#include <dlfcn.h>
#include <link.h>

#include <fmt/format.h>

#include "modeler/errors.h"
#include "modeler/module_call.h"
#include "modeler/module_loaded.h"

namespace modeler {

namespace {

std::string loader_message()
{
    const char* const text = dlerror();
    return text != nullptr ? text : "no reason given";
}

void check_word(const std::filesystem::path& file, std::string_view step, std::uint32_t found,
                std::uint32_t wanted, std::string_view advice)
{
    if (found != wanted)
        throw ModuleError(file, step,
                          fmt::format("is {:#x} where {:#x} is needed; {}", found, wanted, advice));
}

void check_descriptor(const std::filesystem::path& file, const ModuleDescriptor& descriptor)
{
    check_word(file, "synchronisation word", descriptor.sync_word, MODULE_SYNC_WORD,
               "the file is no module");
    check_word(file, "interface version", descriptor.system_version, MODULE_SYSTEM_VERSION,
               "the module was built for another version of the host");
    check_word(file, "machine word", descriptor.machine_word, MODULE_MACHINE_WORD,
               "the module was built for another kind of machine");
    if (descriptor.startup == nullptr)
        throw ModuleError(file, "startup", "the descriptor names no start-up function");
    if (descriptor.shutdown == nullptr)
        throw ModuleError(file, "shutdown", "the descriptor names no shut-down function");
    if (descriptor.servers == nullptr)
        throw ModuleError(file, "server list", "the descriptor names no list of servers");
}

void read_tags(const ServerTagInfo* tags, Server& server)
{
    if (tags != nullptr) {
        for (; tags->text != nullptr; ++tags) {
            std::string* text = nullptr;
            switch (SRVTAG_KIND(tags->tag)) {
            case SRVTAG_USERNAME:
                text = &server.user_name;
                break;
            case SRVTAG_BUTTONNAME:
                text = &server.button_name;
                break;
            case SRVTAG_ENABLE:
                text = &server.enable_condition;
                break;
            default:
                break; // other kinds say nothing that this host makes use of
            }
            // The first string of a kind counts; further ones are in other languages.
            if (text != nullptr && text->empty())
                *text = tags->text;
        }
    }
    if (server.user_name.empty())
        server.user_name = server.name;
    if (server.button_name.empty())
        server.button_name = server.user_name;
}

Server read_server(const std::filesystem::path& file, std::size_t number,
                   const ServerRecord& record)
{
    const auto missing = [&](std::string_view what) {
        return ModuleError(file, "server list", fmt::format("server {} has no {}", number, what));
    };
    if (record.class_name == nullptr)
        throw missing("class");
    if (record.name == nullptr)
        throw missing("name");
    if (record.activate == nullptr)
        throw missing("activation function");
    Server server;
    server.class_name = record.class_name;
    server.name = record.name;
    read_tags(record.tags, server);
    return server;
}

bool ends_list(const ServerRecord& record)
{
    return record.class_name == nullptr && record.name == nullptr && record.activate == nullptr &&
           record.tags == nullptr;
}

void* started(const std::filesystem::path& file, const ModuleDescriptor& descriptor)
{
    void* token = nullptr;
    const ModuleCall call(file, "startup");
    try {
        token = descriptor.startup();
    } catch (const std::exception& problem) {
        throw ModuleError(file, "startup", fmt::format("failed: {}", problem.what()));
    } catch (...) {
        throw ModuleError(file, "startup", "failed with an exception of an unknown kind");
    }
    if (token == nullptr)
        throw ModuleError(file, "startup", "the module says that it cannot work here (null token)");
    return token;
}

/// dlopen through a pointer that is not noexcept, since static constructors of the module may
/// throw. Volatile, so that the compiler does not deduce noexcept again.
void* (*volatile const open_library)(const char* file, int mode) = &dlopen;

/// Loads the file, which runs its static constructors. An exception of one ends the program, since
/// unwinding through the dynamic loader would leave it locked.
void* open_with_constructors(const char* file) noexcept
{
    return open_library(file, RTLD_NOW | RTLD_LOCAL);
}

/// The dlopen handle, or null on failure.
void* open_file(const std::filesystem::path& file)
{
    // dlopen searches the system's library folders for a name without a folder.
    const std::filesystem::path with_folder = std::filesystem::absolute(file);
    // Not in the noexcept function: clang unwinds that function before it terminates.
    const ModuleCall call(file, "loading");
    return open_with_constructors(with_folder.c_str());
}

/// The addresses at which a library is loaded; empty if the dynamic loader does not tell.
std::span<const std::byte> memory_of(void* handle) noexcept
{
    struct Search {
        ElfW(Addr) base;
        std::size_t size;
    };
    link_map* library = nullptr;
    if (dlinfo(handle, RTLD_DI_LINKMAP, &library) != 0)
        return {};
    Search search{library->l_addr, 0};
    dl_iterate_phdr(
        [](dl_phdr_info* info, std::size_t, void* data) {
            auto* const wanted = static_cast<Search*>(data);
            if (info->dlpi_addr != wanted->base)
                return 0;
            for (const ElfW(Phdr) & part : std::span(info->dlpi_phdr, info->dlpi_phnum))
                if (part.p_type == PT_LOAD)
                    wanted->size = std::max(wanted->size, part.p_vaddr + part.p_memsz);
            return 1;
        },
        &search);
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the dynamic loader has addresses as integers
    return {reinterpret_cast<const std::byte*>(search.base), search.size};
}

} // namespace

Module::Loaded::~Loaded()
{
    if (token != nullptr) {
        const ModuleCall call(file, "shutdown");
        try {
            descriptor->shutdown(token);
        } catch (...) {
            // The module is being unloaded; there is no caller to report to.
        }
    }
    if (handle != nullptr) {
        const ModuleCall call(file, "unloading"); // runs the module's destructors
        ModuleCall::watch_unloaded(memory_of(handle));
        dlclose(handle);
    }
}

bool Module::Loaded::add(Server server, ActivateFunc* activate)
{
    if (!positions_.emplace(Key(server.class_name, server.name), servers.size()).second)
        return false;
    servers.push_back(std::move(server));
    activations.push_back(activate);
    return true;
}

std::size_t Module::Loaded::find(std::string_view class_name, std::string_view name) const
{
    const auto found = positions_.find(std::pair(class_name, name));
    return found != positions_.end() ? found->second : servers.size();
}

ActivateFunc* Module::Loaded::activation(std::string_view class_name, std::string_view name) const
{
    const std::size_t position = find(class_name, name);
    return position < servers.size() ? activations[position] : nullptr;
}

Module Module::load(const std::filesystem::path& file)
{
    auto loaded = std::make_unique<Loaded>(file);
    loaded->handle = open_file(file);
    if (loaded->handle == nullptr)
        throw ModuleError(file, "open", fmt::format("cannot be loaded: {}", loader_message()));

    const auto* const descriptor =
        static_cast<const ModuleDescriptor*>(dlsym(loaded->handle, MODULE_DESCRIPTOR_SYMBOL));
    if (descriptor == nullptr)
        throw ModuleError(file, "descriptor",
                          "the file exports no '" MODULE_DESCRIPTOR_SYMBOL "'; it is no module");
    check_descriptor(file, *descriptor);
    loaded->descriptor = descriptor;

    for (const ServerRecord* record = descriptor->servers; !ends_list(*record); ++record) {
        Server server = read_server(file, loaded->servers.size() + 1, *record);
        if (!loaded->add(std::move(server), record->activate))
            throw ModuleError(file, "server list",
                              fmt::format("the server '{}' of class '{}' is there twice",
                                          record->name, record->class_name));
    }
    if (loaded->servers.empty())
        throw ModuleError(file, "server list", "is empty; the module has no command");

    loaded->token = started(file, *descriptor);
    return Module(std::move(loaded));
}

Module::Module(std::unique_ptr<Loaded> loaded) noexcept : loaded_(std::move(loaded)) {}
Module::Module(Module&&) noexcept = default;
Module& Module::operator=(Module&&) noexcept = default;
Module::~Module() = default;

const std::filesystem::path& Module::file() const noexcept { return loaded_->file; }

const std::vector<Server>& Module::servers() const noexcept { return loaded_->servers; }

const Server* Module::find(std::string_view class_name, std::string_view name) const
{
    const std::size_t position = loaded_->find(class_name, name);
    return position < loaded_->servers.size() ? &loaded_->servers[position] : nullptr;
}

} // namespace modeler
