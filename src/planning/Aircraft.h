// The user's aircraft ("\user\aircraft.orv") and the Aircraft window. One
// aircraft is selected; its speeds drive the leg times, its climb and descent
// the offered level, its weights the fuel.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace orv {

class Ui;
class NavLookup;
struct FlightPlan;
struct PlanPanel;

struct AircraftRec {
  int16_t Id = 0;
  std::string AircraftName;
  int32_t MaxFuel = 0;        // kg
  int32_t Ceiling = 0;        // hundreds of feet
  int32_t MaxWeight = 0;      // kg
  int32_t EmptyWeight = 0;    // kg
  int32_t LoadWeight = 0;     // kg
  int32_t ClimbRate = 0;      // ft/min
  int32_t ClimbSpeed = 0;     // kts
  int32_t DescentRate = 0;    // ft/min
  int32_t DescentSpeed = 0;   // kts
  int32_t CruiseSpeed = 0;    // kts
  int32_t CruiseLevel = 0;    // hundreds of feet
  int32_t ApproachSpeed = 0;  // kts
  int32_t MinRunway = 0;      // feet
  int32_t MaxRange = 0;       // NM

  friend bool operator==(const AircraftRec&, const AircraftRec&) = default;
};

inline constexpr std::string_view kAircraftFile = "\\user\\aircraft.orv";
// Values per aircraft in the file.
inline constexpr int kAircraftFields = 16;
// The list holds at most this many aircraft; a longer file is cut with a message.
inline constexpr std::size_t kMaxAircraft = 500;

struct AircraftFile {
  std::vector<AircraftRec> Aircraft;
  std::string Error;  // empty when the whole file was read
};

// The file's text: comma-separated values, 16 per aircraft, read value by value
// regardless of lines; texts may be quoted. fileName names the file in errors.
AircraftFile ParseAircraftFile(std::string_view text, std::string_view fileName);
// One line per aircraft: numbers bare, the name quoted, CR LF at the end.
std::string FormatAircraftFile(const std::vector<AircraftRec>& list);
AircraftFile ReadAircraftFile(const std::filesystem::path& path);
// Replaces the file atomically; false when it could not be written.
bool WriteAircraftFile(const std::filesystem::path& path, const std::vector<AircraftRec>& list);

// A name as the file can hold it: no double quotes, no line ends.
std::string CleanAircraftName(std::string_view name);

// The runway length an aircraft needs, from its approach speed.
int32_t MinRunwayForApproachSpeed(int32_t approachSpeed);

// Start-up choice: the first aircraft whose Id is savedNumber; else savedNumber
// becomes 0 and the first with Id 0 is taken; else, as a read through the whole
// file leaves it, the last one. -1 for an empty list.
int FindStartAircraft(const std::vector<AircraftRec>& list, int16_t& savedNumber);

struct AircraftDb {
  std::vector<AircraftRec> List;
  AircraftRec Current;  // the selected aircraft
};

// Start-up: reads the file (a problem is shown, and what was read stays) and
// selects the saved aircraft.
void LoadAircraft(const std::filesystem::path& path, int16_t& savedNumber, AircraftDb& db, Ui& ui);

// The printed sheet of one aircraft: name, then one labelled value a line.
std::vector<std::string> AircraftPrintLines(const AircraftRec& a);

// The edit boxes of the Aircraft window.
enum class AircraftBox {
  ACNameBox,
  CruiseFLBox,
  LoadBox,
  MaxWeightBox,
  ClimbSpeedBox,
  ClimbRateBox,
  MaxFuelBox,
  DescentRateBox,
  CruiseSpeedBox,
  MaxRangeBox,
  ApproachSpeedBox,
  DescentSpeedBox,
  EmptyBox,
};
inline constexpr int kAircraftBoxCount = 13;

// The Aircraft window without its widgets: the list of names, the boxes of the
// aircraft chosen in the list, and the commands.
class AircraftWindow {
public:
  AircraftWindow(AircraftDb& db, Ui& ui, std::filesystem::path file);

  // Fills the list and shows the selected aircraft.
  void Load();
  const std::vector<std::string>& AircraftList() const { return names_; }
  int ListIndex() const { return listIndex_; }
  // A click in the list: the boxes are checked and kept, then the row shown.
  // False, with the old row still shown, when a box fails its check.
  bool SelectRow(int index);

  const std::string& Box(AircraftBox box) const { return boxes_[static_cast<std::size_t>(box)]; }
  void SetBox(AircraftBox box, std::string_view text) { boxes_[static_cast<std::size_t>(box)] = std::string(text); }

  // Makes the list's aircraft the selected one; with a plan, every leg time
  // and the totals follow the new cruise speed.
  bool ButtonSelectAC(FlightPlan& plan, PlanPanel& panel, const NavLookup& nav);
  void MenuNew();
  bool MenuDelete();
  // Keeps the boxes and writes the file.
  bool CmdOk();

  std::vector<std::string> MenuCurrent() const;
  std::vector<std::string> MenuSelected();
  std::vector<std::string> MenuAll();

private:
  bool StoreBoxes();
  void ShowRow(int index);
  void RefreshNames();

  AircraftDb& db_;
  Ui& ui_;
  std::filesystem::path file_;
  std::vector<std::string> names_;
  int listIndex_ = -1;
  std::array<std::string, kAircraftBoxCount> boxes_;
};

}  // namespace orv
