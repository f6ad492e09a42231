// The object search window frmFind without its widgets: the search text, the
// eight kind options and the result list as plain fields, the buttons and the
// list click as methods. The shell copies what the user types into txtFind,
// calls the event and shows lstFind again; centring the map on the chosen
// object is the shell's part.
//
// Matching: the search text and each record's ident and name are trimmed and
// upper-cased (letters a-z only, as UCase does), and a record matches when the
// search text occurs anywhere in its ident or anywhere in its name. Airways are
// matched on their name alone. A blank search text therefore lists every
// record of the kind. Records are listed in array order, every match once.
//
// List lines: the trimmed ident, two blanks and the trimmed name, e.g.
// "EDDF  Frankfurt Main". An airway segment has no name of its own; its line
// is the airway's name, two blanks, the ident of the intersection it starts
// from, " << " and the ident of the one it leads to ("UL607  RUDUS << KOLAD"),
// "?" standing for an end outside the intersection array. An ILS is listed
// by its own ident and name.
//
// When nothing matches, the list holds one line saying so ("No VOR found",
// ...), except for the victor airways, whose list simply stays empty.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "database/NavDatabase.h"

namespace orv {

// The kind options optAP, optVOR, optNDB, optILS, optInt, optFix, optVictor,
// optJet, in this order.
enum class FindKind : uint8_t { Airport, Vor, Ndb, Ils, Intersection, Fix, Victor, Jet };

inline constexpr int kFindKindCount = 8;

// The map's highlight kinds (HiliteKind): nothing, or the kind of object a
// search finds or the mouse points at, numbered as they always were.
enum class HiliteKind : int16_t { None = 0, Airport, Vor, Ndb, Ils, Intersection, Fix, Victor, Jet };
inline constexpr HiliteKind kHiliteNone = HiliteKind::None;
inline constexpr HiliteKind kHiliteAirport = HiliteKind::Airport;
inline constexpr HiliteKind kHiliteVor = HiliteKind::Vor;
inline constexpr HiliteKind kHiliteNdb = HiliteKind::Ndb;
inline constexpr HiliteKind kHiliteIls = HiliteKind::Ils;
inline constexpr HiliteKind kHiliteIntersection = HiliteKind::Intersection;
inline constexpr HiliteKind kHiliteFix = HiliteKind::Fix;
inline constexpr HiliteKind kHiliteVictor = HiliteKind::Victor;
inline constexpr HiliteKind kHiliteJet = HiliteKind::Jet;

// The latitude a position carries when there is none.
inline constexpr float kNoLatitude = -500;

// One listed object: what to highlight and where the map goes.
struct FoundObject {
  HiliteKind Kind = HiliteKind::None;
  int32_t Index = -1;     // in its array; for an ILS the airport's index
  int32_t SubIndex = -1;  // for an ILS its index in the airport's Ils list, else -1
  // The object's position: the record's own; for an ILS its runway's when the
  // ILS is tied to one, else the airport's; for an airway segment the
  // intersection it starts from (or, when that is outside the array, the one
  // it leads to). Lat is kNoLatitude when neither end exists.
  float Lat = kNoLatitude;
  float Lon = 0;

  friend bool operator==(const FoundObject&, const FoundObject&) = default;
};

struct FindResult {
  std::vector<std::string> Lines;    // what lstFind shows
  std::vector<FoundObject> Objects;  // one per line; empty when the line is the empty-result text
};

// The line shown when nothing matches; empty for the victor airways.
std::string_view EmptyFindText(FindKind kind);

// The kind of a name as the command line writes it: "airport", "vor", "ndb",
// "ils", "int", "fix", "victor", "jet" (any case).
std::optional<FindKind> FindKindFromName(std::string_view name);

// One search: the linear scan of the kind's array.
FindResult FindObjects(const NavDatabase& db, FindKind kind, std::string_view text);

class FrmFind {
public:
  explicit FrmFind(const NavDatabase& db) : db_(db) {}

  // Controls.
  std::string txtFind;
  FindKind Option = FindKind::Airport;  // the kind option that is on
  std::vector<std::string> lstFind;
  int lstFindIndex = -1;  // the selected line, -1 for none
  bool Visible = false;

  // Load: shown with an empty list; the text and the option are kept from
  // the last use, as a hidden window keeps its controls.
  void FormLoad();
  void OptClick(FindKind kind) { Option = kind; }
  // Runs the search of the chosen kind for txtFind and fills lstFind.
  void CmdFindClick();
  // Selects a line; gives the object to centre on, nothing for a line that
  // names no object (the empty-result text) or an index outside the list.
  std::optional<FoundObject> LstFindClick(int index);
  void CmdCancelClick() { Visible = false; }

private:
  const NavDatabase& db_;
  std::vector<FoundObject> objects_;
};

}  // namespace orv
