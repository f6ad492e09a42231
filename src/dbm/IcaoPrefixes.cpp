#include "dbm/IcaoPrefixes.h"

#include <algorithm>
#include <array>

namespace orv::dbm {

namespace {

struct Entry {
  std::string_view Prefix;
  std::string_view Country;
};

// Regions by the first letter of the indicator (the ICAO's own areas, named
// for a pilot choosing an airport).
std::string_view RegionOfLetter(char c) {
  switch (c) {
    case 'A': return "South Pacific";
    case 'B': return "Arctic";
    case 'C': return "Canada";
    case 'D': return "West Africa";
    case 'E': return "Northern Europe";
    case 'F': return "Southern Africa";
    case 'G': return "West Africa";
    case 'H': return "East Africa";
    case 'K': return "United States";
    case 'L': return "Southern Europe";
    case 'M': return "Central America";
    case 'N': return "South Pacific";
    case 'O': return "Middle East";
    case 'P': return "North Pacific";
    case 'R': return "East Asia";
    case 'S': return "South America";
    case 'T': return "Caribbean";
    case 'U': return "Russia and CIS";
    case 'V': return "South Asia";
    case 'W': return "Southeast Asia";
    case 'Y': return "Australia";
    case 'Z': return "China";
    default: return "";
  }
}

// Two-letter prefixes, in alphabetical order.
constexpr std::array kTwoLetter = std::to_array<Entry>({
    {"AG", "Solomon Islands"}, {"AN", "Nauru"}, {"AY", "Papua New Guinea"},
    {"BG", "Greenland"}, {"BI", "Iceland"}, {"BK", "Kosovo"},
    {"DA", "Algeria"}, {"DB", "Benin"}, {"DF", "Burkina Faso"}, {"DG", "Ghana"}, {"DI", "Ivory Coast"},
    {"DN", "Nigeria"}, {"DR", "Niger"}, {"DT", "Tunisia"}, {"DX", "Togo"},
    {"EB", "Belgium"}, {"ED", "Germany"}, {"EE", "Estonia"}, {"EF", "Finland"}, {"EG", "United Kingdom"},
    {"EH", "Netherlands"}, {"EI", "Ireland"}, {"EK", "Denmark"}, {"EL", "Luxembourg"}, {"EN", "Norway"},
    {"EP", "Poland"}, {"ES", "Sweden"}, {"ET", "Germany"}, {"EV", "Latvia"}, {"EY", "Lithuania"},
    {"FA", "South Africa"}, {"FB", "Botswana"}, {"FC", "Congo"}, {"FD", "Eswatini"}, {"FE", "Central African Republic"},
    {"FG", "Equatorial Guinea"}, {"FH", "Saint Helena"}, {"FI", "Mauritius"}, {"FJ", "British Indian Ocean Territory"},
    {"FK", "Cameroon"}, {"FL", "Zambia"}, {"FM", "Madagascar"}, {"FN", "Angola"}, {"FO", "Gabon"},
    {"FP", "Sao Tome and Principe"}, {"FQ", "Mozambique"}, {"FS", "Seychelles"}, {"FT", "Chad"}, {"FV", "Zimbabwe"},
    {"FW", "Malawi"}, {"FX", "Lesotho"}, {"FY", "Namibia"}, {"FZ", "DR Congo"},
    {"GA", "Mali"}, {"GB", "Gambia"}, {"GC", "Canary Islands"}, {"GE", "Ceuta and Melilla"}, {"GF", "Sierra Leone"},
    {"GG", "Guinea-Bissau"}, {"GL", "Liberia"}, {"GM", "Morocco"}, {"GO", "Senegal"}, {"GQ", "Mauritania"},
    {"GS", "Western Sahara"}, {"GU", "Guinea"}, {"GV", "Cape Verde"},
    {"HA", "Ethiopia"}, {"HB", "Burundi"}, {"HC", "Somalia"}, {"HD", "Djibouti"}, {"HE", "Egypt"}, {"HH", "Eritrea"},
    {"HK", "Kenya"}, {"HL", "Libya"}, {"HR", "Rwanda"}, {"HS", "Sudan"}, {"HT", "Tanzania"}, {"HU", "Uganda"},
    {"LA", "Albania"}, {"LB", "Bulgaria"}, {"LC", "Cyprus"}, {"LD", "Croatia"}, {"LE", "Spain"}, {"LF", "France"},
    {"LG", "Greece"}, {"LH", "Hungary"}, {"LI", "Italy"}, {"LJ", "Slovenia"}, {"LK", "Czech Republic"},
    {"LL", "Israel"}, {"LM", "Malta"}, {"LN", "Monaco"}, {"LO", "Austria"}, {"LP", "Portugal"},
    {"LQ", "Bosnia and Herzegovina"}, {"LR", "Romania"}, {"LS", "Switzerland"}, {"LT", "Turkey"}, {"LU", "Moldova"},
    {"LV", "Palestine"}, {"LW", "North Macedonia"}, {"LX", "Gibraltar"}, {"LY", "Serbia"}, {"LZ", "Slovakia"},
    {"MB", "Turks and Caicos Islands"}, {"MD", "Dominican Republic"}, {"MG", "Guatemala"}, {"MH", "Honduras"},
    {"MK", "Jamaica"}, {"MM", "Mexico"}, {"MN", "Nicaragua"}, {"MP", "Panama"}, {"MR", "Costa Rica"},
    {"MS", "El Salvador"}, {"MT", "Haiti"}, {"MU", "Cuba"}, {"MW", "Cayman Islands"}, {"MY", "Bahamas"},
    {"MZ", "Belize"},
    {"NC", "Cook Islands"}, {"NF", "Fiji"}, {"NG", "Kiribati"}, {"NI", "Niue"}, {"NL", "Wallis and Futuna"},
    {"NS", "Samoa"}, {"NT", "French Polynesia"}, {"NV", "Vanuatu"}, {"NW", "New Caledonia"}, {"NZ", "New Zealand"},
    {"OA", "Afghanistan"}, {"OB", "Bahrain"}, {"OE", "Saudi Arabia"}, {"OI", "Iran"}, {"OJ", "Jordan"},
    {"OK", "Kuwait"}, {"OL", "Lebanon"}, {"OM", "United Arab Emirates"}, {"OO", "Oman"}, {"OP", "Pakistan"},
    {"OR", "Iraq"}, {"OS", "Syria"}, {"OT", "Qatar"}, {"OY", "Yemen"},
    {"PA", "United States"}, {"PB", "United States"}, {"PC", "Kiribati"}, {"PF", "United States"},
    {"PG", "Guam"}, {"PH", "United States"}, {"PJ", "United States"}, {"PK", "Marshall Islands"},
    {"PL", "Kiribati"}, {"PM", "United States"}, {"PO", "United States"}, {"PP", "United States"},
    {"PT", "Micronesia"}, {"PW", "United States"},
    {"RC", "Taiwan"}, {"RJ", "Japan"}, {"RK", "South Korea"}, {"RO", "Japan"}, {"RP", "Philippines"},
    {"SA", "Argentina"}, {"SB", "Brazil"}, {"SC", "Chile"}, {"SD", "Brazil"}, {"SE", "Ecuador"},
    {"SF", "Falkland Islands"}, {"SG", "Paraguay"}, {"SI", "Brazil"}, {"SJ", "Brazil"}, {"SK", "Colombia"},
    {"SL", "Bolivia"}, {"SM", "Suriname"}, {"SN", "Brazil"}, {"SO", "French Guiana"}, {"SP", "Peru"},
    {"SS", "Brazil"}, {"SU", "Uruguay"}, {"SV", "Venezuela"}, {"SW", "Brazil"}, {"SY", "Guyana"},
    {"TA", "Antigua and Barbuda"}, {"TB", "Barbados"}, {"TD", "Dominica"}, {"TF", "Guadeloupe and Martinique"},
    {"TG", "Grenada"}, {"TI", "US Virgin Islands"}, {"TJ", "Puerto Rico"}, {"TK", "Saint Kitts and Nevis"},
    {"TL", "Saint Lucia"}, {"TN", "Caribbean Netherlands"}, {"TQ", "Anguilla"}, {"TR", "Montserrat"},
    {"TT", "Trinidad and Tobago"}, {"TU", "British Virgin Islands"}, {"TV", "Saint Vincent"}, {"TX", "Bermuda"},
    {"UA", "Kazakhstan"}, {"UB", "Azerbaijan"}, {"UC", "Kyrgyzstan"}, {"UD", "Armenia"}, {"UG", "Georgia"},
    {"UK", "Ukraine"}, {"UM", "Belarus"}, {"UT", "Central Asia"},
    {"VA", "India"}, {"VC", "Sri Lanka"}, {"VD", "Cambodia"}, {"VE", "India"}, {"VG", "Bangladesh"},
    {"VH", "Hong Kong"}, {"VI", "India"}, {"VL", "Laos"}, {"VM", "Macau"}, {"VN", "Nepal"}, {"VO", "India"},
    {"VQ", "Bhutan"}, {"VR", "Maldives"}, {"VT", "Thailand"}, {"VV", "Vietnam"}, {"VY", "Myanmar"},
    {"WA", "Indonesia"}, {"WB", "Malaysia"}, {"WI", "Indonesia"}, {"WM", "Malaysia"}, {"WP", "East Timor"},
    {"WQ", "Indonesia"}, {"WR", "Indonesia"}, {"WS", "Singapore"},
    {"ZK", "North Korea"}, {"ZM", "Mongolia"},
});

std::string_view CountryOfLetter(char c) {
  switch (c) {
    case 'C': return "Canada";
    case 'K': return "United States";
    case 'U': return "Russia";
    case 'Y': return "Australia";
    case 'Z': return "China";
    default: return "";
  }
}

bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }

bool InUnitedStates(double lat, double lon) {
  return (lat >= 24 && lat <= 50 && lon >= -125 && lon <= -66) ||  // the lower 48
         (lat >= 51 && lat <= 72 && lon >= -170 && lon <= -129) || // Alaska
         (lat >= 18 && lat <= 23 && lon >= -161 && lon <= -154);   // Hawaii
}

}  // namespace

PlaceOfPrefix PlaceOfIdent(std::string_view ident, double lat, double lon) {
  bool icaoLike = ident.size() == 4 && std::all_of(ident.begin(), ident.end(), IsLetter);
  if (icaoLike) {
    std::string_view two = ident.substr(0, 2);
    auto it = std::find_if(kTwoLetter.begin(), kTwoLetter.end(), [two](const Entry& e) { return e.Prefix == two; });
    std::string_view region = RegionOfLetter(ident[0]);
    if (it != kTwoLetter.end() && it->Prefix == two) return {it->Country, region};
    std::string_view country = CountryOfLetter(ident[0]);
    if (!country.empty()) return {country, region};
  }
  if (InUnitedStates(lat, lon)) return {"United States", "United States"};
  return {};
}

}  // namespace orv::dbm
