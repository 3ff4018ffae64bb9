// How a module lays out its string resources for the host's string loader on
// POSIX systems, where modules carry no resource section: one exported, sorted table.
#pragma once

struct ZvStringResource {
  unsigned int id;
  const char* text;
};

// Name of the exported table, ended by a row whose text is null.
#define ZV_STRING_TABLE_SYMBOL "zv_string_resources"
