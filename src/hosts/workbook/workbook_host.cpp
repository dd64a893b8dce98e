#include "hosts/workbook/workbook_host.h"

#include <utility>

#include "hosts/workbook/application.h"
#include "hosts/workbook/memory_engine.h"

namespace quintara {

Ref<excel::Application> StartWorkbooksInMemory(std::shared_ptr<Gate> gate, std::shared_ptr<FileContents> files) {
  return MakeRef<workbook::ApplicationObject>(std::make_shared<workbook::Session>(
      std::move(gate), std::move(files), std::make_unique<workbook::MemoryEngine>()));
}

}  // namespace quintara
