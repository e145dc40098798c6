// SPDX-License-Identifier: MIT
/// How a module file presents itself to a host: one exported descriptor that names its servers.
#pragma once

#include "hostapi/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define MODULE_SYNC_WORD 0x04121994u ///< first word of every descriptor
#define MODULE_SYSTEM_VERSION 3u     ///< version of this interface
#define MODULE_MACHINE_WORD 0x400u   ///< the machine family a module was built for

/// Name of the one symbol that a module exports: a ModuleDescriptor.
#define MODULE_DESCRIPTOR_SYMBOL "_mod_descrip"

/// Looks up a service of the host by its exact name.
/// Returns the service's function table, owned by the host and valid until the activation function
/// returns, or null when the host has no such service.
typedef void* GlobalFunc(const char* service, int use_mode);

#define GLOBAL_USE_TRANSIENT 0 ///< the service is wanted for the running activation only

/// What an activation function answers.
enum { AFUNC_OK = 0, AFUNC_BADLOCAL = 3 };

/// Runs a server once.
/// `version`: the host's interface version of the server's class. `global`: the service lookup.
/// `local`: what the class hands over; for "MeshDataEdit" a MeshEditBegin (hostapi/mesh_edit.h).
/// `server_data`: the host's own, opaque. Called on the host's thread, one call at a time.
/// Returns AFUNC_OK, or AFUNC_BADLOCAL when `local` gave nothing to work on.
typedef int ActivateFunc(long version, GlobalFunc* global, void* local, void* server_data);

/// Kinds of a tag, in the upper 16 bits of its value; the lower 16 bits are a language or 0.
enum { SRVTAG_USERNAME = 0, SRVTAG_BUTTONNAME = 1, SRVTAG_ENABLE = 5 };

#define SRVTAG_VALUE(kind, language) (((uint32_t)(kind) << 16) | (uint32_t)(language))
#define SRVTAG_KIND(value) ((value) >> 16)
#define LANGID_USENGLISH 0x0409u

/// One line about a server: a text and what it is. A null text with value 0 ends the list.
typedef struct ServerTagInfo {
    const char* text; ///< owned by the module, valid while it is loaded
    uint32_t tag;     ///< SRVTAG_VALUE(kind, language)
} ServerTagInfo;

/// One command of a module. A record of nulls ends the list.
typedef struct ServerRecord {
    const char* class_name;    ///< kind of server, such as "MeshDataEdit"
    const char* name;          ///< internal name, unique within the class
    ActivateFunc* activate;    ///< runs it
    const ServerTagInfo* tags; ///< may be null: no tags
} ServerRecord;

/// What the exported symbol holds. The host reads it, calls `startup` once, uses the servers, and
/// calls `shutdown` with the token before it unloads the module.
typedef struct ModuleDescriptor {
    uint32_t sync_word;            ///< MODULE_SYNC_WORD
    uint32_t system_version;       ///< MODULE_SYSTEM_VERSION
    uint32_t machine_word;         ///< MODULE_MACHINE_WORD
    void* (*startup)(void);        ///< returns a token; null means that the module cannot work
    void (*shutdown)(void* token); ///< ends the module's life
    const ServerRecord* servers;   ///< owned by the module
} ModuleDescriptor;

#ifdef __cplusplus
}
#endif
