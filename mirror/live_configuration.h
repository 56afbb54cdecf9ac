#pragma once

#include "options.h"
#include "toml_reader.h"

namespace borvane::mirror {

/// Reads the table "[live]" of a configuration file: which events are shown and kept.
void ReadLive(TomlReader &toml, const toml::node &node, LiveOptions &live);

/// Reads the tables "[[source]]", which take the place of the sources and feeds that there are. Of two sources, the one
/// that is named first is believed.
void ReadSources(TomlReader &toml, const toml::node &node, LiveOptions &live);

}  // namespace borvane::mirror
