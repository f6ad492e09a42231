#include <gtest/gtest.h>

#include <filesystem>

#include "core/FileIo.h"
#include "core/Settings.h"
#include "support/ScriptedUi.h"
#include "support/TempDir.h"

namespace orv {
namespace {

namespace fs = std::filesystem;

// The file a fresh installation writes, key by key, colours in decimal.
constexpr std::string_view kDefaultIni =
    "MAPWIN=0\r\nSCALE=6\r\nAIRCRAFT=12\r\nMAP=4194304\r\nCOAST=98\r\nLATLONG=6250335\r\nCOMP=8388608\r\n"
    "WIND=255\r\nHILITE=255\r\nMEASURE=16776960\r\nZOOM=255\r\nMSA=8421504\r\nVICTOR=16744448\r\n"
    "CTRZ=4144959\r\nJET=16776960\r\nAIR1=21760\r\nAIR2=5963867\r\nVOR=33023\r\nNDB=48896\r\nILS=32896\r\n"
    "INT=12615680\r\nFIX=19948\r\nUSER=8421504\r\nMOVAC=16776960\r\nACINCTRZ=255\r\nROUTE=255\r\n"
    "ACATCTRZ=16776960\r\nAI=65535\r\nAIFREQ=65280\r\nTCAS1=33023\r\nTCAS2=255\r\nAP=11513775\r\n"
    "RWY=4144959\r\nTAXI=14671839\r\nPARKING=65280\r\nLAND=12079\r\nRIVER=12615680\r\nIVAOFIR=6553700\r\n"
    "IVAOFSS=65280\r\nIVAOTWR=255\r\nIVAOGND=65535\r\nIVAOAPP=16744576\r\nFILL=0\r\nFONTSIZE=0\r\nLL=3\r\n"
    "SECLEN=50\r\nSECWIDTH=30\r\nFAFDIST=11\r\nDEFDIST=4\r\nFUEL=2\r\nBUTTON=1\r\nAIMENU=0\r\nAIRSPACE=1\r\n"
    "AITRAFFIC=0\r\nGPSVISIBLE=0\r\nCOMPMENU=1\r\nLATLONMENU=1\r\nGC=1\r\nREGION=0\r\nCOUNTRY=75\r\n"
    "STATE=-1\r\nCITY=85\r\nDECSEC=1\r\nARC=1\r\nDIRCON=0\r\nTRACEALT=15000\r\nTRACEALTTYPE=0\r\n"
    "FPPATH09=\r\nFPPATH10=\r\nNATRACKURL=https://www.notams.faa.gov/trackmain.html\r\n"
    "PACOTURL=https://www.notams.faa.gov/trackmain.html\r\nWXURL=https://aviationweather.gov/data/cache/metars.cache.csv.gz\r\n"
    "AUTODOWNLOAD=1\r\nDLINTERVAL=3\r\nSQUAWKBOXPATH=\r\nIVAOPATH=\r\nSTATICACCOLOR=7012202\r\n"
    "ONLUSRCALLSIGN=\r\nONLSHOWALTSPEED=1\r\nONLSHOWDEPDEST=1\r\nMZOOM=0\r\nSIMSOURCE=builtin\r\nLASTPLAN=\r\n"
    "VATSIMURLSTATUS=https://status.vatsim.net/status.json\r\n"
    "IVAOURLSTATUS=https://api.ivao.aero/v2/tracker/whazzup\r\n";

Settings Read(std::string_view text) {
  Settings s;
  ReadIni(text, s);
  return s;
}

TEST(Settings, DefaultsAreWrittenWholeInTheFixedOrder) {
  EXPECT_EQ(WriteIni(Settings()), kDefaultIni);
  // The defaults read back are the defaults (FSX and the TRACEALTTYPE flag
  // stay unset without their keys: see ClampsAndRewritesAfterReading).
  EXPECT_EQ(WriteIni(Read(kDefaultIni)), kDefaultIni);
}

TEST(Settings, EveryKeyRoundTripsThroughTheFile) {
  Settings s;
  s.MapWin = 2; s.Scale = 14; s.Aircraft = 20; s.Map = 1; s.Coast = 2; s.LatLong = 3; s.Comp = 4; s.Wind = 5;
  s.Hilite = 6; s.Measure = 7; s.Zoom = 8; s.Msa = 9; s.Victor = 10; s.Ctrz = 11; s.Jet = 12; s.Air1 = 13;
  s.Air2 = 14; s.Vor = 15; s.Ndb = 16; s.Ils = 17; s.Int = 18; s.Fix = 19; s.User = 20; s.MovAc = 21;
  s.AcInCtrz = 22; s.Route = 23; s.AcAtCtrz = 24; s.Ai = 25; s.AiFreq = 26; s.Tcas1 = 27; s.Tcas2 = 28;
  s.Ap = 29; s.Rwy = 30; s.Taxi = 31; s.Parking = 32; s.Land = 33; s.River = 34; s.IvaoFir = 35;
  s.IvaoFss = 36; s.IvaoTwr = 37; s.IvaoGnd = 38; s.IvaoApp = 39; s.Fill = 1; s.FontSize = 1; s.LL = 2;
  s.SecLen = 40; s.SecWidth = 20; s.FafDist = 9; s.DefDist = 6; s.Fuel = 3; s.Button = 0; s.AiMenu = 1;
  s.Airspace = 0; s.AiTraffic = 1; s.GpsVisible = 1; s.CompMenu = 0; s.LatLonMenu = 0; s.Gc = false;
  s.Region = 3; s.Country = 4; s.State = 5; s.City = 6; s.DecSec = 0; s.FpPath09 = "C:\\FS9\\Plans";
  s.FpPath10 = "D:\\FSX plans"; s.Arc = 0; s.DirCon = 1; s.TraceAlt = 20000; s.TraceAltType = 1;
  s.NaTrackUrl = "https://a.example/trackmain.html"; s.PacotUrl = "https://b.example/p"; s.WxUrl = "https://c";
  s.AutoDownload = false; s.DlInterval = 10; s.SquawkBoxPath = "/sb"; s.IvaoPath = "/iv";
  s.SimSource = "bridge:127.0.0.1:9000";
  s.StaticAcColor = 42; s.OnlUsrCallsign = "DLH123"; s.OnlShowAltSpeed = false; s.OnlShowDepDest = false;
  s.MZoom = 1; s.VatsimUrlStatus = "v"; s.IvaoUrlStatus = "i"; s.Fsx = true;
  std::string text = WriteIni(s);
  EXPECT_NE(text, kDefaultIni);
  EXPECT_EQ(WriteIni(Read(text)), text);
  EXPECT_NE(text.find("\r\nGC=0\r\n"), std::string::npos);
  EXPECT_NE(text.find("\r\nFPPATH10=D:\\FSX plans\r\n"), std::string::npos);
  EXPECT_EQ(text.substr(text.size() - 7), "FSX=1\r\n");
}

TEST(Settings, MatchingIsByCaseSensitiveKeyAndEqualsAtLineStart) {
  Settings s = Read("SCALEX=9\nscale=8\n SCALE=7\nSCALE 5\nAIRCRAFT=15\n");
  EXPECT_EQ(s.Scale, 6);      // none of the four lines is SCALE=
  EXPECT_EQ(s.Aircraft, 15);
  // The last occurrence wins; "AI=" does not catch "AIFREQ=" nor the reverse.
  s = Read("SCALE=3\r\nAI=1\r\nAIFREQ=2\r\nSCALE=11\r\nAIR1=4\r\n");
  EXPECT_EQ(s.Scale, 11);
  EXPECT_EQ(s.Ai, 1);
  EXPECT_EQ(s.AiFreq, 2);
  EXPECT_EQ(s.Air1, 4);
  EXPECT_EQ(s.Air2, 0x5B005B);
  // Mixed line ends and a last line without one.
  s = Read("LL=1\rSECLEN=20\n\nSECWIDTH=25");
  EXPECT_EQ(s.LL, 1);
  EXPECT_EQ(s.SecLen, 20);
  EXPECT_EQ(s.SecWidth, 25);
}

TEST(Settings, NumbersAreTolerantRoundedHalfToEvenAndAValueThatDoesNotFitKeepsTheDefault) {
  Settings s = Read("SCALE=2.5\nAIRCRAFT=3.5\nMAPWIN=255.4\nFUEL=300\nDECSEC=40000\nLL=-32768\nSECLEN=-40000\n"
                    "MAP=12abc\nCOAST=abc\nREGION=2147483648\nCITY= 17 \nFAFDIST=1E1\nMZOOM=-0.5\n");
  EXPECT_EQ(s.Scale, 2);
  EXPECT_EQ(s.Aircraft, 4);
  EXPECT_EQ(s.MapWin, 255);
  EXPECT_EQ(s.Fuel, 2);
  EXPECT_EQ(s.DecSec, 1);
  EXPECT_EQ(s.LL, -32768);
  EXPECT_EQ(s.SecLen, 50);
  EXPECT_EQ(s.Map, 12);
  EXPECT_EQ(s.Coast, 0);
  EXPECT_EQ(s.Region, 0);
  EXPECT_EQ(s.City, 17);
  EXPECT_EQ(s.FafDist, 10);
  EXPECT_EQ(s.MZoom, 0);
  // The save writes the defaults back, never a clamped 255 or 32767.
  std::string text = WriteIni(s);
  EXPECT_NE(text.find("\r\nFUEL=2\r\n"), std::string::npos);
  EXPECT_NE(text.find("\r\nDECSEC=1\r\n"), std::string::npos);
  EXPECT_NE(text.find("\r\nSECLEN=50\r\n"), std::string::npos);
  // An earlier good line of the key stays when a later one does not fit.
  EXPECT_EQ(Read("FUEL=1\nFUEL=256\n").Fuel, 1);
  // Texts are the rest of the line as it stands, blanks and "=" included.
  s = Read("FPPATH09= C:\\a=b \nONLUSRCALLSIGN=\n");
  EXPECT_EQ(s.FpPath09, " C:\\a=b ");
  EXPECT_EQ(s.OnlUsrCallsign, "");
}

TEST(Settings, ClampsAndRewritesAfterReading) {
  EXPECT_EQ(Read("TRACEALT=500").TraceAlt, 1000);
  EXPECT_EQ(Read("TRACEALT=60000").TraceAlt, 50000);
  EXPECT_EQ(Read("TRACEALT=1000").TraceAlt, 1000);
  EXPECT_EQ(Read("TRACEALT=50000").TraceAlt, 50000);
  EXPECT_EQ(Read("TRACEALT=abc").TraceAlt, 1000);
  EXPECT_EQ(Read("DEFDIST=0").DefDist, 4);
  EXPECT_EQ(Read("DEFDIST=0.4").DefDist, 4);
  EXPECT_EQ(Read("DEFDIST=-1").DefDist, -1);
  EXPECT_EQ(Read("DEFDIST=7").DefDist, 7);

  Settings s = Read("NATRACKURL=http://www.notams.faa.gov/common/nat.html\n"
                    "PACOTURL=http://www.notams.faa.gov/common/nat.html\n");
  EXPECT_EQ(s.NaTrackUrl, "http://www.notams.faa.gov/trackmain.html");
  EXPECT_EQ(s.PacotUrl, "http://www.notams.faa.gov/common/nat.html");  // only the NAT page moved

  // GC: any number but 0 is on, and it is written back as 1 or 0.
  EXPECT_NE(WriteIni(Read("GC=5")).find("\r\nGC=1\r\n"), std::string::npos);
  EXPECT_NE(WriteIni(Read("GC=0")).find("\r\nGC=0\r\n"), std::string::npos);
  EXPECT_FALSE(Read("AUTODOWNLOAD=0").AutoDownload);

  // TRACEALTTYPE sets its flag each time the key is read; absent, it stays off.
  EXPECT_FALSE(Read("").TraceAltTypeZero);
  EXPECT_TRUE(Read("TRACEALTTYPE=0").TraceAltTypeZero);
  EXPECT_FALSE(Read("TRACEALTTYPE=1").TraceAltTypeZero);
  EXPECT_FALSE(Read("TRACEALTTYPE=0\nTRACEALTTYPE=2").TraceAltTypeZero);
  EXPECT_EQ(Read("TRACEALTTYPE=0\nTRACEALTTYPE=2").TraceAltType, 2);

  // FSX: absent stays absent and unwritten; present it is written as a flag.
  EXPECT_FALSE(Read("").Fsx.has_value());
  EXPECT_EQ(Read("FSX=0").Fsx, std::optional<bool>(false));
  EXPECT_EQ(Read("FSX=7").Fsx, std::optional<bool>(true));
  EXPECT_EQ(WriteIni(Read("FSX=7")), std::string(kDefaultIni) + "FSX=1\r\n");
}

TEST(Settings, GarbageKeepsTheDefaults) {
  std::string binary;
  for (int i = 0; i < 256; ++i) binary += static_cast<char>(i);
  std::string longLine(200000, 'X');
  std::string hostile = binary + "\n" + longLine + "\nUNKNOWN=5\n=\n==\nSCALE\n" + std::string(1000, '\n') +
                        std::string("\0\0SCALE=9", 8) + "\n" + binary;
  EXPECT_EQ(WriteIni(Read(hostile)), kDefaultIni);
  EXPECT_EQ(WriteIni(Read(std::string(100000, '='))), kDefaultIni);  // no line end at all
  // A key at the very end without a line end still counts.
  EXPECT_EQ(Read(longLine + "\nZOOM=7").Zoom, 7);
  // A value that is itself very long.
  EXPECT_EQ(Read("WXURL=" + longLine).WxUrl, longLine);
}

TEST(Settings, LineBreaksInsideTextsCannotForgeKeys) {
  Settings s;
  s.OnlUsrCallsign = "ABC\r\nDIRCON=1";
  std::string text = WriteIni(s);
  EXPECT_NE(text.find("ONLUSRCALLSIGN=ABC  DIRCON=1\r\n"), std::string::npos);
  EXPECT_EQ(Read(text).DirCon, 0);
}

TEST(Settings, SaveAndReadThroughTheFile) {
  test::TempDir dir;
  AppFolder app(dir.Path());
  Settings s;
  ReadIniFile(app, s);  // no file: the defaults stand
  EXPECT_EQ(WriteIni(s), kDefaultIni);
  s.Scale = 9;
  ASSERT_TRUE(SaveIni(app, s));
  EXPECT_EQ(*ReadWholeText(dir.Path() / "orv.ini"), WriteIni(s));
  EXPECT_FALSE(fs::exists(dir.Path() / "orv.ini.tmp"));
  Settings back;
  ReadIniFile(app, back);
  EXPECT_EQ(back.Scale, 9);
  // The file's name is found in any case.
  fs::rename(dir.Path() / "orv.ini", dir.Path() / "ORV.INI");
  Settings again;
  ReadIniFile(app, again);
  EXPECT_EQ(again.Scale, 9);
}

TEST(Settings, SimulatorFromTheFsxKey) {
  test::TempDir dir;
  AppFolder app(dir.Path());
  SimulatorChoice c = ChooseSimulator(Read("FSX=0"), app);
  EXPECT_FALSE(c.IsFsx);
  EXPECT_EQ(c.DatabaseFolder, "\\database\\FS09\\");
  EXPECT_EQ(c.Suffix, " for Flight Simulator 2004");
  c = ChooseSimulator(Read("FSX=2"), app);
  EXPECT_TRUE(c.IsFsx);
  EXPECT_EQ(c.DatabaseFolder, "\\database\\FS10\\");
  EXPECT_EQ(c.Suffix, " for Flight Simulator X");
  // With the key the folders are not probed, and so not made.
  EXPECT_FALSE(fs::exists(dir.Path() / "database"));
}

TEST(Settings, SimulatorProbedFromTheDatabaseFolders) {
  struct Case {
    bool fs09, fs10, isFsx;
    std::string_view folder, suffix;
  };
  const Case cases[] = {
      {false, false, false, "\\database\\FS09\\", " for FS2004"},
      {true, false, false, "\\database\\FS09\\", " for FS2004"},
      {false, true, true, "\\database\\FS10\\", " for FS X"},
      {true, true, false, "\\database\\FS09\\", " for FS2004"},
  };
  for (const Case& k : cases) {
    SCOPED_TRACE(std::to_string(k.fs09) + std::to_string(k.fs10));
    test::TempDir dir;
    if (k.fs09) dir.Write("database/FS09/airport.orv", "x");
    if (k.fs10) dir.Write("database/FS10/Airport.ORV", "x");
    SimulatorChoice c = ChooseSimulator(Settings(), AppFolder(dir.Path()));
    EXPECT_EQ(c.IsFsx, k.isFsx);
    EXPECT_EQ(c.DatabaseFolder, k.folder);
    EXPECT_EQ(c.Suffix, k.suffix);
    // Probing makes the folders it looks into.
    EXPECT_TRUE(fs::is_directory(dir.Path() / "database" / "FS09"));
    if (!k.fs09) {
      EXPECT_TRUE(fs::is_directory(dir.Path() / "database" / "FS10"));
    }
  }
  // A folder that cannot be made is no reason to stop.
  test::TempDir dir;
  dir.Write("database", "a file where the folder should be");
  SimulatorChoice c = ChooseSimulator(Settings(), AppFolder(dir.Path()));
  EXPECT_FALSE(c.IsFsx);
  EXPECT_EQ(c.Suffix, " for FS2004");
}

TEST(Settings, DbManagerIniAndExportFolders) {
  std::string_view text = "FSPATH09=C:\\FS9\nFSPATH10=C:\\FSX\nfspath10=x\nFSPATH10=D:\\FSX\n";
  EXPECT_EQ(ReadDbManagerIni(text, false), "C:\\FS9");
  EXPECT_EQ(ReadDbManagerIni(text, true), "D:\\FSX");
  EXPECT_EQ(ReadDbManagerIni(std::string_view("garbage\0FSPATH09=x", 18), false), "");

  test::TempDir dir;
  AppFolder app(dir.Path());
  Settings s = Read("SQUAWKBOXPATH=\nIVAOPATH=/mine\n");
  FillDefaultPaths(s, app);
  EXPECT_EQ(s.SquawkBoxPath, (dir.Path() / "FSplan" / "SquawkBox").string());
  EXPECT_EQ(s.IvaoPath, "/mine");
}

TEST(Settings, ColourThemes) {
  std::string_view text =
      "[Night]\r\nMAP=0\r\nCOAST=255\r\nSCALE=19\r\nmap=7\r\n[Day]\r\nMAP=16777215\r\nSTATICACCOLOR=1\r\n[Night]\r\nMAP=5\r\n";
  EXPECT_EQ(ColorThemeNames(text), (std::vector<std::string>{"Night", "Day", "Night"}));
  EXPECT_EQ(ColorThemeNames("[Open\n[]\nX=1\n"), (std::vector<std::string>{"Open", ""}));
  Settings s;
  ASSERT_TRUE(ApplyColorTheme(text, "Night", s));
  EXPECT_EQ(s.Map, 0);         // the first theme of the name, not the later one
  EXPECT_EQ(s.Coast, 255);
  EXPECT_EQ(s.Scale, 6);       // not a colour: the theme cannot change it
  EXPECT_EQ(s.Land, 0x002F2F);
  ASSERT_TRUE(ApplyColorTheme(text, "Day", s));
  EXPECT_EQ(s.Map, 16777215);
  EXPECT_EQ(s.Coast, 255);     // keys a theme leaves out keep their live value
  EXPECT_EQ(s.StaticAcColor, 1);
  EXPECT_FALSE(ApplyColorTheme(text, "Dusk", s));

  test::TempDir dir;
  test::ScriptedUi ui;
  EXPECT_FALSE(ReadColorFile(AppFolder(dir.Path()), ui).has_value());
  ASSERT_EQ(ui.Messages(), (std::vector<std::string>{"ORVColor.ini missing!"}));
  EXPECT_EQ(ui.events[0].title, "Orvanta");
  dir.Write("ORVColor.ini", "[A]\n");
  EXPECT_EQ(*ReadColorFile(AppFolder(dir.Path()), ui), "[A]\n");
  EXPECT_EQ(ui.Messages().size(), 1u);
}

TEST(Settings, IvaoServerList) {
  test::TempDir dir;
  AppFolder app(dir.Path());
  const std::vector<std::string>& defaults = DefaultIvaoUrls();
  ASSERT_EQ(defaults.size(), 3u);
  EXPECT_EQ(defaults[0].substr(defaults[0].size() - 12), "/whazzup.txt");
  EXPECT_EQ(defaults[1].substr(defaults[1].size() - 12), "/whazzup.txt");
  EXPECT_EQ(defaults[2].substr(defaults[2].size() - 20), "/whazzup/whazzup.txt");
  EXPECT_NE(defaults[0], defaults[1]);

  // Missing: made with the three lines, which are then the list.
  EXPECT_EQ(LoadIvaoUrls(app), defaults);
  EXPECT_EQ(*ReadWholeText(dir.Path() / "URLIVAO.INI"), defaults[0] + "\r\n" + defaults[1] + "\r\n" + defaults[2] + "\r\n");
  // An empty file: the first default alone.
  dir.Write("URLIVAO.INI", "");
  EXPECT_EQ(LoadIvaoUrls(app), std::vector<std::string>{defaults[0]});
  // Lines are trimmed; blank ones are passed over.
  dir.Write("URLIVAO.INI", "  http://a/whazzup.txt \r\n\r\nhttp://b/w.txt");
  EXPECT_EQ(LoadIvaoUrls(app), (std::vector<std::string>{"http://a/whazzup.txt", "http://b/w.txt"}));
  EXPECT_EQ(ReadUrlList("   \n\n"), std::vector<std::string>{defaults[0]});
}

}  // namespace
}  // namespace orv
