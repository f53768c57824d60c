// The library of an office: TOML files in a folder <-> the tables of the Template database.
#pragma once

#include <filesystem>

#include "data/Workspace.h"

namespace inspector::library {

using device::Text;

// Replaces the rows of every table of the Template database by those of the folder's files, whole or not at
// all. Three things outlast it: the login for the server, the columns of Options that the folder does not
// name, and the key counters when the folder has none. With `copy`, a copy of the database is kept beside it
// first, and its path put there; without, as for a database just made, none is.
//
// Returns what is wrong in words for a person (file, line and key when it is the content of a file), or an
// empty text.
Text ImportLibrary(data::Workspace& workspace, const std::filesystem::path& folder,
                   std::filesystem::path* copy = nullptr);

// Writes one file per table. Each appears whole under its name. A folder that holds other .toml files is
// refused, because an import would read them too. Returns what is wrong, or an empty text.
Text ExportLibrary(data::Workspace& workspace, const std::filesystem::path& folder);

}  // namespace inspector::library
