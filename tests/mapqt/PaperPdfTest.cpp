// The papers and the printed map as PDF files: whole files of the expected
// number of pages, drawn as vectors.
#include "mapqt/PaperPdf.h"

#include <gtest/gtest.h>

#include "core/AppState.h"
#include "core/FileIo.h"
#include "core/Startup.h"
#include "documents/Papers.h"
#include "map/RenderPass.h"
#include "mapqt/QtFontSet.h"
#include "planning/Aircraft.h"
#include "support/SmallWorld.h"
#include "support/TempDir.h"

namespace orv {
namespace {

// Pages of a PDF: its "/Type /Page" objects (the "/Type /Pages" tree excluded).
int PdfPages(const std::string& pdf) {
  int pages = 0;
  for (std::size_t at = pdf.find("/Type /Page"); at != std::string::npos; at = pdf.find("/Type /Page", at + 1))
    if (at + 11 < pdf.size() && pdf[at + 11] != 's') ++pages;
  return pages;
}

TEST(PaperPdf, PapersAndMapAsFiles) {
  NavDatabase db;
  test::BuildSmallWorld(db);
  FlightPlan plan;
  test::BuildSmallPlan(plan);
  plan.DepartureAirport = 0;
  plan.DestinationAirport = 1;
  AppState state;
  FillNameTables(state);
  AircraftRec ac;
  ac.ApproachSpeed = 120;
  QtFontSet fonts;
  test::TempDir dir;

  PrintFP dialog;
  PaperSources sources{&plan, &db, &ac, &state, -1, -1};
  const auto papers = dir.Path() / "papers.pdf";
  std::string why;
  ASSERT_EQ(WritePapersPdf(papers, fonts, dialog, sources, &why), 4) << why;
  std::optional<std::string> pdf = ReadWholeText(papers);
  ASSERT_TRUE(pdf);
  EXPECT_EQ(pdf->substr(0, 5), "%PDF-");
  EXPECT_EQ(PdfPages(*pdf), 4);
  EXPECT_NE(pdf->find("%%EOF"), std::string::npos);

  // Nothing chosen: no file at all.
  dialog.chckGFI = dialog.chckWPList = dialog.chckCtrz = false;
  EXPECT_EQ(WritePapersPdf(dir.Path() / "none.pdf", fonts, dialog, sources, &why), 0);
  EXPECT_EQ(why, "nothing to print");
  EXPECT_FALSE(std::filesystem::exists(dir.Path() / "none.pdf"));

  // The map: one landscape page.
  ViewState view;
  view.CntrLat = 50, view.CntrLon = 8;
  MapLayers layers;
  MapScene scene{view, state.Config, layers, db, plan};
  MapRenderer renderer;
  const auto map = dir.Path() / "map.pdf";
  ASSERT_EQ(WriteMapPdf(map, fonts, scene, renderer, &why), 1) << why;
  pdf = ReadWholeText(map);
  ASSERT_TRUE(pdf);
  EXPECT_EQ(pdf->substr(0, 5), "%PDF-");
  EXPECT_EQ(PdfPages(*pdf), 1);
  // A4 landscape in points.
  EXPECT_NE(pdf->find("/MediaBox [0 0 842.000000 595.000000]"), std::string::npos);
  EXPECT_EQ(view.CntrLat, 50);  // the window's view is left as it was
}

}  // namespace
}  // namespace orv
