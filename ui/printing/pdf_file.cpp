#include "ui/printing/pdf_file.h"

#include <string_view>

#include "engine/disk_files.h"
#include "ui/shared/save_file.h"

namespace tessaril {

PdfFile::PdfFile(const std::string& path, const QPageLayout& layout, const QString& title)
    : path_(path), writer_(&file_) {
  QPageLayout edge_to_edge = layout;
  edge_to_edge.setMode(QPageLayout::FullPageMode);
  writer_.setPageLayout(edge_to_edge);
  writer_.setTitle(title);
  writer_.setCreator("Tessaril");
}

Status PdfFile::Finish() {
  std::string_view content;
  if (Status status = file_.Content(content); !status.ok()) return status;
  DiskFiles files;
  return SaveFile(files, path_, content);
}

}  // namespace tessaril
