#include "mapqt/PaperPdf.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>

#include "core/FileIo.h"
#include "documents/Papers.h"
#include "map/RenderPass.h"
#include "mapqt/QPainterTarget.h"

namespace orv {

int DrawPages(QPagedPaintDevice& device, const QtFontSet& fonts, const std::function<int(DrawTarget&)>& draw) {
  QPainterTarget target(fonts, device, device.logicalDpiY());
  const int pages = draw(target);
  target.End();
  return pages;
}

int WritePdf(const std::filesystem::path& path, const QtFontSet& fonts, bool landscape, const std::string& title,
             const std::function<int(DrawTarget&)>& draw, std::string* error) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  int pages = 0;
  {
    QPdfWriter writer(&buffer);
    writer.setResolution(kPdfDpi);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4),
                                     landscape ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()));
    writer.setTitle(QString::fromLatin1(title.data(), static_cast<qsizetype>(title.size())));
    writer.setCreator(QStringLiteral("Orvanta"));
    pages = DrawPages(writer, fonts, draw);
  }
  buffer.close();
  if (pages <= 0) {
    if (error) *error = "nothing to print";
    return 0;
  }
  const QByteArray& bytes = buffer.data();
  if (!WriteFileAtomic(path, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())))) {
    if (error) *error = "cannot write the file";
    return 0;
  }
  return pages;
}

int PrintPapers(QPagedPaintDevice& printer, const QtFontSet& fonts, const PrintFP& choice, const PaperSources& sources) {
  return DrawPages(printer, fonts, [&](DrawTarget& t) { return choice.cmdOK(t, sources); });
}

int WritePapersPdf(const std::filesystem::path& path, const QtFontSet& fonts, const PrintFP& choice,
                   const PaperSources& sources, std::string* error) {
  return WritePdf(path, fonts, false, "Orvanta Flight Plan", [&](DrawTarget& t) { return choice.cmdOK(t, sources); },
                  error);
}

void DrawMapPage(DrawTarget& page, const MapScene& scene, MapRenderer& renderer) {
  // The window's width of ground across the page, at the window's scale.
  const double width = scene.View.ScaleWidth > 0 ? scene.View.ScaleWidth : 10000;
  page.SetScaleWidth(width);
  page.SetScaleHeight(width * page.PixelHeight() / std::max(1, page.PixelWidth()));
  ViewState view = scene.View;
  MapScene copy{view, scene.Colours, scene.Layers, scene.Db, scene.Plan, scene.Highlight, scene.Overlays};
  renderer.DrawMap(copy, page);
}

int PrintMap(QPagedPaintDevice& printer, const QtFontSet& fonts, const MapScene& scene, MapRenderer& renderer) {
  return DrawPages(printer, fonts, [&](DrawTarget& t) {
    DrawMapPage(t, scene, renderer);
    return 1;
  });
}

int WriteMapPdf(const std::filesystem::path& path, const QtFontSet& fonts, const MapScene& scene,
                MapRenderer& renderer, std::string* error) {
  return WritePdf(path, fonts, true, "Orvanta Map", [&](DrawTarget& t) {
    DrawMapPage(t, scene, renderer);
    return 1;
  }, error);
}

}  // namespace orv
