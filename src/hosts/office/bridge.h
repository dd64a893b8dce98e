#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "hosts/workbook/engine.h"

namespace quintara::office {

using workbook::Cell;
using workbook::CellArea;
using workbook::CellGrid;

/// How long is waited for LibreOffice, at most, before it is taken for dead and ended.
struct Limits {
  std::chrono::milliseconds start{60'000};  ///< until it can be spoken to
  std::chrono::milliseconds answer{120'000};
  std::chrono::milliseconds end{10'000};
};

struct Connection;

/// A LibreOffice of its own and the way to it. Fails with 429 when it can't be started, with 462 once it has
/// ended or was ended for an overdue answer, with 1004 for what it refuses. One thread, that which made it.
class Bridge : public workbook::Engine {
 public:
  Bridge(const std::string& program, const Limits& limits);
  ~Bridge() override;

  std::unique_ptr<workbook::Document> Add(int sheets) override;
  std::unique_ptr<workbook::Document> Load(const std::string& bytes, const std::string& name) override;
  /// A folder for files that pass between LibreOffice and us, gone at the end.
  const std::string& Folder() const;

  bool IsAlive() const noexcept;
  void RequireAlive() const override;
  void End() noexcept override;

  /// The process, and the calls that went to it.
  int Process() const noexcept;
  int Calls() const noexcept;

 private:
  std::shared_ptr<Connection> connection_;
};

}  // namespace quintara::office
