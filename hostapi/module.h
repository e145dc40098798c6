// SPDX-License-Identifier: MIT
/// How a module file presents itself to a host: one exported descriptor that names its servers.
///
/// The life of a module: the host opens the file and finds MODULE_DESCRIPTOR_SYMBOL, compares the
/// three words, reads the list of servers, calls `startup`, then runs servers as often as the user
/// asks, one at a time, then calls `shutdown` and closes the file. A host that refuses the file at
/// one of these steps makes none of the later calls.
#pragma once

#include "hostapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define MODULE_SYNC_WORD 0x04121994u ///< first word of every descriptor
#define MODULE_SYSTEM_VERSION 3u     ///< version of this interface
#define MODULE_MACHINE_WORD 0x400u   ///< the machine family a module was built for

/// Name of the one symbol that a module exports: a ModuleDescriptor. It is spelled so in the source
/// of a module, too: `MODULE_EXPORT const ModuleDescriptor _mod_descrip = {...};`
#define MODULE_DESCRIPTOR_SYMBOL "_mod_descrip"

/// Stands before the descriptor, and makes it visible to the host in a file whose other symbols are
/// hidden (`-fvisibility=hidden`). In C++ it gives the name C linkage, too.
#ifdef __cplusplus
#define MODULE_EXPORT extern "C" __attribute__((visibility("default")))
#else
#define MODULE_EXPORT __attribute__((visibility("default")))
#endif

/// Looks up a service of the host by its exact name, read during the call. [run]
/// `use_mode` is GLOBAL_USE_TRANSIENT.
/// Returns the service's function table, owned by the host and valid until the activation function
/// returns, or null when the host has no such service or mode. A module that cannot work without
/// the service says so, where it can, and returns; it must not call through the null.
typedef void* GlobalFunc(const char* service, int use_mode);

#define GLOBAL_USE_TRANSIENT 0 ///< the service is wanted for the running activation only

/// What an activation function answers.
enum {
    AFUNC_OK = 0,      ///< the run is over: done, refused with a message, or cancelled by the user
    AFUNC_BADLOCAL = 3 ///< `local` gave nothing to work on
};

/// Runs a server once, from the user's request to the finished edit: this is the run. Called by the
/// host while no other run is under way.
/// `version`: the host's interface version of the server's class, 1 for "MeshDataEdit".
/// `global`: the service lookup, never null.
/// `local`: what the class hands over, never null; for "MeshDataEdit" a MeshEditBegin*
/// (hostapi/mesh_edit.h), to be converted back to that.
/// `server_data`: the host's own, opaque; may be null.
/// All three are valid until this function returns. The host runs one server at a time and never
/// calls this function again before it has returned.
/// Returns an AFUNC_* code. After any other value the host tells the user that the command failed.
typedef int ActivateFunc(long version, GlobalFunc* global, void* local, void* server_data);

/// Kinds of a tag, in the upper 16 bits of its value; the lower 16 bits are a language or 0. A host
/// passes over kinds that it does not know.
enum {
    SRVTAG_USERNAME = 0,   ///< name for menus and titles
    SRVTAG_BUTTONNAME = 1, ///< short name for buttons
    SRVTAG_ENABLE = 5      ///< when the server is offered: "pol" asks for a foreground polygon
};

#define SRVTAG_VALUE(kind, language) (((uint32_t)(kind) << 16) | (uint32_t)(language))
#define SRVTAG_KIND(value) ((value) >> 16)
#define LANGID_USENGLISH 0x0409u

/// One line about a server: a text and what it is. A null text with value 0 ends the list.
typedef struct ServerTagInfo {
    const char* text; ///< owned by the module, unchanged while it is loaded
    uint32_t tag;     ///< SRVTAG_VALUE(kind, language)
} ServerTagInfo;

/// One command of a module. A record of nulls ends the list. Texts and tags are the module's and
/// stay unchanged while it is loaded; class and name together are there once.
typedef struct ServerRecord {
    const char* class_name;    ///< kind of server, such as "MeshDataEdit"
    const char* name;          ///< internal name, unique within the class
    ActivateFunc* activate;    ///< runs it
    const ServerTagInfo* tags; ///< may be null: no tags
} ServerRecord;

/// What the exported symbol holds. It is there, complete, as soon as the file is opened, and does
/// not change. No entry may be null.
typedef struct ModuleDescriptor {
    uint32_t sync_word;      ///< MODULE_SYNC_WORD
    uint32_t system_version; ///< MODULE_SYSTEM_VERSION
    uint32_t machine_word;   ///< MODULE_MACHINE_WORD

    /// Called once, before any server is run. [load] No service can be used yet.
    /// Returns a token, which the host keeps and never looks behind; null means that the module
    /// cannot work: it is then unloaded without `shutdown`.
    void* (*startup)(void);

    /// Called once with that token, after the last run and before the file is closed. [load]
    /// Not called where the program is ended in the middle.
    void (*shutdown)(void* token);

    const ServerRecord* servers; ///< owned by the module, at least one, ended by a record of nulls
} ModuleDescriptor;

#ifdef __cplusplus
}
#endif
