// The style and parameter catalogue the host's user interface shows.
#include <algorithm>
#include <cstring>

#include "frame/catalogue.h"
#include "frame/registration.h"
#include "frame/zv_transition.h"
#include "host/transition_registry.h"

namespace {

constexpr unsigned int kLabelResource = 2000;
constexpr int kLabelSlots = 24;
constexpr int kLabelSlotBytes = 64;

// How a transition's styles are named: by a list resource, by one empty name,
// or not at all.
enum StyleNames { kNoNames, kListResource, kOneEmptyName };

struct CatalogueRow {
  int style_count;
  StyleNames names;
  unsigned int list;  // the style list's resource, with kListResource
  int label_count;    // -1: count 1 with a null label
  int label_slots[3];
};

// Indexed by transition id - 1. The counts of some ids disagree with their
// lists on purpose (21, 22, 23, 26, 33, 39, 40, 58): hosts rely on the counts.
const CatalogueRow kCatalogue[66] = {
    {8, kListResource, 1000, 1, {0}},        // 1
    {8, kListResource, 1000, 1, {0}},        // 2
    {8, kListResource, 1000, 1, {0}},        // 3
    {8, kListResource, 1000, 1, {0}},        // 4
    {8, kListResource, 1001, 1, {0}},        // 5
    {8, kListResource, 1002, 1, {0}},        // 6
    {8, kListResource, 1003, 1, {0}},        // 7
    {8, kListResource, 1004, 1, {0}},        // 8
    {4, kListResource, 1005, 2, {0, 1}},     // 9
    {8, kListResource, 1006, 2, {0, 2}},     // 10
    {8, kListResource, 1007, 2, {0, 3}},     // 11
    {2, kListResource, 1008, 2, {0, 4}},     // 12
    {8, kListResource, 1009, 1, {0}},        // 13
    {8, kListResource, 1010, 1, {0}},        // 14
    {8, kListResource, 1011, 3, {0, 5, 6}},  // 15
    {2, kListResource, 1031, 3, {0, 8, 9}},  // 16
    {0, kNoNames, 0, 0, {}},                 // 17
    {8, kListResource, 1013, 2, {0, 10}},    // 18
    {4, kListResource, 1014, 3, {0, 11, 12}},  // 19
    {6, kListResource, 1020, 1, {0}},        // 20
    {2, kListResource, 1020, 1, {0}},        // 21
    {2, kListResource, 1000, 1, {0}},        // 22
    {2, kListResource, 1000, 1, {0}},        // 23
    {4, kListResource, 1018, 1, {0}},        // 24
    {4, kListResource, 1019, 1, {0}},        // 25
    {2, kListResource, 1000, 0, {}},         // 26
    {2, kListResource, 1012, 1, {0}},        // 27
    {2, kListResource, 1012, 1, {0}},        // 28
    {2, kListResource, 1015, 2, {0, 15}},    // 29
    {2, kListResource, 1012, 1, {0}},        // 30
    {8, kListResource, 1016, 1, {0}},        // 31
    {4, kListResource, 1017, 1, {0}},        // 32
    {4, kListResource, 1000, 1, {0}},        // 33
    {0, kOneEmptyName, 0, -1, {}},           // 34
    {4, kListResource, 1023, 1, {0}},        // 35
    {2, kListResource, 1022, 1, {0}},        // 36
    {0, kOneEmptyName, 0, -1, {}},           // 37
    {0, kOneEmptyName, 0, -1, {}},           // 38
    {4, kListResource, 1000, 1, {0}},        // 39
    {2, kListResource, 1000, 1, {0}},        // 40
    {0, kNoNames, 0, 0, {}},                 // 41
    {0, kNoNames, 0, 0, {}},                 // 42
    {0, kNoNames, 0, 0, {}},                 // 43
    {2, kListResource, 1024, 3, {0, 13, 14}},  // 44
    {0, kNoNames, 0, 0, {}},                 // 45
    {2, kListResource, 1024, 3, {0, 16, 17}},  // 46
    {3, kListResource, 1025, 0, {}},         // 47
    {2, kListResource, 1026, 0, {}},         // 48
    {0, kNoNames, 0, 0, {}},                 // 49
    {0, kNoNames, 0, 0, {}},                 // 50
    {0, kNoNames, 0, 0, {}},                 // 51
    {0, kNoNames, 0, 0, {}},                 // 52
    {0, kNoNames, 0, 0, {}},                 // 53
    {3, kListResource, 1027, 0, {}},         // 54
    {0, kNoNames, 0, 0, {}},                 // 55
    {2, kListResource, 1028, 0, {}},         // 56
    {0, kNoNames, 0, 0, {}},                 // 57
    {4, kListResource, 1000, 0, {}},         // 58
    {2, kListResource, 1012, 0, {}},         // 59
    {6, kListResource, 1030, 0, {}},         // 60
    {0, kNoNames, 0, 0, {}},                 // 61
    {0, kNoNames, 0, 0, {}},                 // 62
    {2, kListResource, 1029, 0, {}},         // 63
    {0, kNoNames, 0, 0, {}},                 // 64
    {0, kNoNames, 0, 0, {}},                 // 65
    {0, kNoNames, 0, 0, {}},                 // 66
};

// Labels are handed out only for ids up to this one; later ids have none.
constexpr int kLastIdWithLabels = 46;

const CatalogueRow* row_for(int id) { return (id >= 1 && id <= 66) ? &kCatalogue[id - 1] : nullptr; }

// Shared by every call, as hosts expect: each call overwrites the last answer.
char g_style_text[256];
const char* g_style_names[16];
const char g_empty_name[] = "";

char g_label_table[kLabelSlots][kLabelSlotBytes];
const char* g_labels[4];
zvTarnParamExplain g_explain;
bool g_explain_initialised = false;

// Splits `text` in place at line feeds, storing each piece's start in `pieces`
// until a piece without a line feed or an empty piece.
template <typename Store>
void split_lines(char* text, Store&& store) {
  for (int index = 0; *text; ++index) {
    char* feed = std::strchr(text, '\n');
    if (feed) *feed = '\0';
    store(index, text);
    if (!feed) break;
    text = feed + 1;
  }
}

void load_label_table() {
  if (g_label_table[0][0]) return;
  const char* text = zv::load_library_string(kLabelResource);
  if (!text) return;
  char buffer[kLabelSlots * kLabelSlotBytes];
  std::strncpy(buffer, text, sizeof buffer - 1);
  buffer[sizeof buffer - 1] = '\0';
  split_lines(buffer, [](int index, const char* line) {
    if (index >= kLabelSlots) return;
    size_t length = std::min(std::strlen(line), static_cast<size_t>(kLabelSlotBytes - 1));
    std::memcpy(g_label_table[index], line, length);
    g_label_table[index][length] = '\0';
  });
}

}  // namespace

int ZV_STDCALL zvTranGetStyleCount(int id) {
  const CatalogueRow* row = row_for(id);
  return row ? row->style_count : 0;
}

const char** ZV_STDCALL zvTranGetStyleName(int id) {
  const CatalogueRow* row = row_for(id);
  if (!row || row->names == kNoNames) return nullptr;
  if (row->names == kOneEmptyName) {
    g_style_names[0] = g_empty_name;  // the other entries keep what earlier calls left
    return g_style_names;
  }
  const char* text = zv::load_library_string(row->list);
  // Without a loader there is nothing to copy: an empty list rather than a crash.
  std::strncpy(g_style_text, text ? text : "", sizeof g_style_text - 1);
  g_style_text[sizeof g_style_text - 1] = '\0';
  split_lines(g_style_text, [](int index, const char* line) {
    if (index < 16) g_style_names[index] = line;
  });
  return g_style_names;
}

zvTarnParamExplain* ZV_STDCALL zvTranGetParamExplain(int id) {
  if (!g_explain_initialised) {
    g_explain = {0, nullptr};
    g_explain_initialised = true;
  }
  load_label_table();
  for (const char*& label : g_labels) label = nullptr;
  g_explain.count = 0;  // the label pointer is left as it was
  if (id < 1 || id > kLastIdWithLabels) return &g_explain;
  const CatalogueRow& row = kCatalogue[id - 1];
  if (row.label_count == 0) return &g_explain;
  if (row.label_count < 0) {
    // One label, and it is null: kept as hosts expect.
    g_explain.count = 1;
  } else {
    g_explain.count = row.label_count;
    for (int i = 0; i < row.label_count; ++i) g_labels[i] = g_label_table[row.label_slots[i]];
  }
  g_explain.labels = g_labels;
  return &g_explain;
}

zvTarnParamExplain* ZV_STDCALL zvTranGetParamExplain(const char* name) {
  // The host's id is used as it comes.
  return zvTranGetParamExplain(transition_get_op_id(name));
}

int zv::style_list_length(int id) {
  const CatalogueRow* row = row_for(id);
  if (!row || row->names == kNoNames) return 0;
  if (row->names == kOneEmptyName) return 1;
  const char* text = load_library_string(row->list);
  if (!text || !*text) return 0;
  int lines = 1;
  for (; *text; ++text) lines += *text == '\n';
  return lines;
}
