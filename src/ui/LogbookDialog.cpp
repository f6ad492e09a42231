#include "ui/LogbookDialog.h"

#include <QAbstractTableModel>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

#include "mapqt/PaperPdf.h"
#include "ui/QtUi.h"

namespace orv::ui {

// grdLogbook as a read-only view of the window's rows.
class LogbookGridModel : public QAbstractTableModel {
public:
  LogbookGridModel(const LogbookWindow& form, QObject* parent) : QAbstractTableModel(parent), form_(form) {}
  int rowCount(const QModelIndex& parent = QModelIndex()) const override {
    return parent.isValid() ? 0 : static_cast<int>(form_.Rows.size());
  }
  int columnCount(const QModelIndex& parent = QModelIndex()) const override {
    return parent.isValid() ? 0 : static_cast<int>(form_.Headings.size());
  }
  QVariant data(const QModelIndex& index, int role) const override {
    if (role != Qt::DisplayRole || !index.isValid()) return {};
    const auto r = static_cast<std::size_t>(index.row()), c = static_cast<std::size_t>(index.column());
    if (r >= form_.Rows.size() || c >= form_.Rows[r].size()) return {};
    return ToQt(form_.Rows[r][c]);
  }
  QVariant headerData(int section, Qt::Orientation o, int role) const override {
    if (role != Qt::DisplayRole || o != Qt::Horizontal || section < 0 ||
        section >= static_cast<int>(form_.Headings.size()))
      return {};
    return ToQt(form_.Headings[static_cast<std::size_t>(section)]);
  }
  void Reset() {
    beginResetModel();
    endResetModel();
  }

private:
  const LogbookWindow& form_;
};

namespace {

// The detail labels, two columns of seven.
constexpr const char* kDetailNames[] = {"lblFlightNo",   "lblTailNo",     "lblAirline",    "lblAircraft",
                                        "lblDeparture",  "lblDestination", "lblDistance",  "lblFOBTakeoff",
                                        "lblFOBLanding", "lblFuelUsed",    "lblAverageFuel", "lblATE",
                                        "lblMaxAlt",     "lblAverageGS"};

}  // namespace

LogbookDialog::LogbookDialog(ProgramState& s, Ui& ui, const QtFontSet& fonts, QWidget* parent)
    : QDialog(parent), ui_(ui), fonts_(fonts), form_(s, ui) {
  setObjectName("frmLogbook");
  setWindowTitle("Logbook");
  grid_ = new QTableView(this);
  grid_->setObjectName("grdLogbook");
  model_ = new LogbookGridModel(form_, grid_);
  grid_->setModel(model_);
  grid_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  grid_->setSelectionBehavior(QAbstractItemView::SelectRows);
  grid_->setSelectionMode(QAbstractItemView::SingleSelection);
  grid_->verticalHeader()->setDefaultSectionSize(grid_->fontMetrics().height() + 4);
  grid_->horizontalHeader()->setStretchLastSection(true);
  total_ = new QLabel(this);
  total_->setObjectName("lblTotal");

  auto* details = new QGridLayout;
  int i = 0;
  for (const char* name : kDetailNames) {
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    details->addWidget(label, i % 7, i / 7);
    labels_[name] = label;
    ++i;
  }
  lstLogWP_ = new QListWidget(this);
  lstLogWP_->setObjectName("lstLogWP");
  lstLogWP_->setMaximumWidth(160);

  auto* del = new QPushButton("&Delete", this);
  del->setObjectName("cmdDelete");
  auto* csv = new QPushButton("&Export CSV...", this);
  csv->setObjectName("cmdExport");
  auto* print = new QPushButton("&Print...", this);
  print->setObjectName("cmdPrintLogBook");
  auto* pdf = new QPushButton("P&DF...", this);
  pdf->setObjectName("cmdPdf");
  auto* close = new QPushButton("&Close", this);
  close->setObjectName("cmdClose");
  auto* buttons = new QHBoxLayout;
  for (QPushButton* b : {del, csv, print, pdf}) buttons->addWidget(b);
  buttons->addStretch(1);
  buttons->addWidget(close);

  auto* lower = new QHBoxLayout;
  lower->addLayout(details, 1);
  lower->addWidget(lstLogWP_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(grid_, 1);
  layout->addWidget(total_);
  layout->addLayout(lower);
  layout->addLayout(buttons);

  connect(grid_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          [this](const QModelIndex& current) {
            form_.RowClick(current.isValid() ? current.row() : -1);
            ShowDetail();
          });
  connect(del, &QPushButton::clicked, this, [this] {
    if (form_.cmdDelete()) Refresh();
  });
  connect(csv, &QPushButton::clicked, this, [this] { form_.cmdExport(); });
  connect(print, &QPushButton::clicked, this, [this] {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted) return;
    DrawPages(printer, fonts_, [this](DrawTarget& t) { return form_.Print(t); });
  });
  connect(pdf, &QPushButton::clicked, this, [this] {
    FileQuestion q;
    q.Title = "Logbook as PDF";
    q.Filter = "PDF files (*.pdf)|*.pdf";
    q.Folder = form_.BookPath().parent_path().string();
    q.Name = "Logbook.pdf";
    std::string path;
    if (ui_.AskSaveFile(q, path)) WritePdfTo(path);
  });
  connect(close, &QPushButton::clicked, this, &QDialog::close);
  resize(620, 560);
}

LogbookDialog::~LogbookDialog() = default;

void LogbookDialog::Open() {
  form_.Load();
  Refresh();
  show();
  raise();
}

bool LogbookDialog::WritePdfTo(const std::string& path) {
  std::string why;
  if (WritePdf(path, fonts_, false, "Orvanta Logbook", [this](DrawTarget& t) { return form_.Print(t); }, &why) > 0)
    return true;
  ui_.MsgBox("The logbook could not be written to " + path + ": " + why);
  return false;
}

void LogbookDialog::Refresh() {
  model_->Reset();
  grid_->resizeColumnsToContents();
  total_->setText(ToQt(form_.lblTotal));
  if (form_.SelectedRow >= 0) {
    grid_->selectionModel()->blockSignals(true);
    grid_->selectRow(form_.SelectedRow);
    grid_->selectionModel()->blockSignals(false);
  }
  ShowDetail();
}

void LogbookDialog::ShowDetail() {
  const LogbookDetail& d = form_.Detail;
  const std::pair<const char*, const std::string*> texts[] = {
      {"lblFlightNo", &d.lblFlightNo},       {"lblTailNo", &d.lblTailNo},
      {"lblAirline", &d.lblAirline},         {"lblAircraft", &d.lblAircraft},
      {"lblDeparture", &d.lblDeparture},     {"lblDestination", &d.lblDestination},
      {"lblDistance", &d.lblDistance},       {"lblFOBTakeoff", &d.lblFOBTakeoff},
      {"lblFOBLanding", &d.lblFOBLanding},   {"lblFuelUsed", &d.lblFuelUsed},
      {"lblAverageFuel", &d.lblAverageFuel}, {"lblATE", &d.lblATE},
      {"lblMaxAlt", &d.lblMaxAlt},           {"lblAverageGS", &d.lblAverageGS}};
  for (const auto& [name, text] : texts) labels_[name]->setText(ToQt(*text));
  lstLogWP_->clear();
  for (const std::string& line : form_.lstLogWP) lstLogWP_->addItem(ToQt(line));
}

QLabel* LogbookDialog::Label(const std::string& name) const {
  auto it = labels_.find(name);
  return it == labels_.end() ? nullptr : it->second;
}

}  // namespace orv::ui
