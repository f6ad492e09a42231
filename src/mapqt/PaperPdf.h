// Pages drawn by the core onto Qt's paged devices: the papers of a flight and
// the printed map, into a PDF file (QPdfWriter) or onto a printer (QPrinter,
// after Qt's print dialog). Everything is drawn as vectors and text.
#pragma once

#include <QPagedPaintDevice>
#include <filesystem>
#include <functional>
#include <string>

#include "map/DrawTarget.h"

namespace orv {

class QtFontSet;
struct PrintFP;
struct PaperSources;
struct MapScene;
class MapRenderer;

// The resolution the PDF files are written at.
inline constexpr int kPdfDpi = 300;

// Draws pages on a paged device through a QPainterTarget at the device's
// resolution. The callback lays out the pages (it calls NewPage between
// them) and returns how many it made.
int DrawPages(QPagedPaintDevice& device, const QtFontSet& fonts, const std::function<int(DrawTarget&)>& draw);

// The same into a PDF file of A4 pages (portrait or landscape), written
// whole or not at all. Returns the number of pages; 0 with the reason in
// error when nothing was drawn or the file could not be written.
int WritePdf(const std::filesystem::path& path, const QtFontSet& fonts, bool landscape, const std::string& title,
             const std::function<int(DrawTarget&)>& draw, std::string* error = nullptr);

// MenuPrintPlan: the papers of the plan onto a printer the user chose, or into a file.
int PrintPapers(QPagedPaintDevice& printer, const QtFontSet& fonts, const PrintFP& choice, const PaperSources& sources);
int WritePapersPdf(const std::filesystem::path& path, const QtFontSet& fonts, const PrintFP& choice,
                   const PaperSources& sources, std::string* error = nullptr);

// menuPrintMap: the present view through the render pass on one landscape
// page. The page shows the window's width of ground at the window's scale,
// centred where the window is; the view itself is not changed.
void DrawMapPage(DrawTarget& page, const MapScene& scene, MapRenderer& renderer);
int PrintMap(QPagedPaintDevice& printer, const QtFontSet& fonts, const MapScene& scene, MapRenderer& renderer);
int WriteMapPdf(const std::filesystem::path& path, const QtFontSet& fonts, const MapScene& scene,
                MapRenderer& renderer, std::string* error = nullptr);

}  // namespace orv
