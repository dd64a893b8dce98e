#include <array>
#include <atomic>
#include <cstdio>
#include <memory>
#include <thread>

#include "access/session/process.h"
#include "access/session/the_platform.h"
#include "automation/dispatch/com.h"
// Behind the system's own header.
#include <commctrl.h>

#include "windows/bare_tree.h"
#include "windows/bench_platform.h"
#include "windows/counter_item.h"
#include "windows/figures.h"
#include "windows/other_process.h"
#include "windows/served_world.h"
#include "wip/Cls_Application.h"

namespace quintara::bench {
namespace {

constexpr int kRepetitions = 5;
constexpr int kBareRequests = 1'000;
// Beside the requests the time holds what the vault does for them, 1.1 to 1.4 of it in all on a busy machine.
constexpr double kBoundOfRequests = 2;
// The panel reads settings, texts and a thousand objects out of a vault before it has its rows: 8 to 10.
constexpr double kBoundOfRows = 25;
constexpr DWORD kPoll = 2;

HWND VisibleWindow() {
  HWND found = nullptr;
  EnumWindows(
      [](HWND window, LPARAM into) -> BOOL {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        const bool isDialog = (GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION;
        if (process != GetCurrentProcessId() || !isDialog || !IsWindowVisible(window)) return TRUE;
        *reinterpret_cast<HWND*>(into) = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

LRESULT RowsIn(HWND panel) {
  LRESULT rows = 0;
  EnumChildWindows(
      panel,
      [](HWND child, LPARAM into) -> BOOL {
        std::array<wchar_t, 64> name{};
        GetClassNameW(child, name.data(), int{name.size()});
        if (std::wstring(name.data()) != WC_TREEVIEWW) return TRUE;
        *reinterpret_cast<LRESULT*>(into) = SendMessageW(child, TVM_GETCOUNT, 0, 0);
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&rows));
  return rows;
}

// Runs the command until its panel can be seen with all its rows, and closes it as the user would.
double SecondsToThePanel(const Ref<AnyObject>& selection) {
  double seconds = 0;
  std::atomic<bool> isOver = false;
  const auto start = Clock::now();
  std::thread user([&] {
    auto panel = VisibleWindow();
    while ((!panel || RowsIn(panel) < kNodes) && !isOver) {
      ::Sleep(kPoll);
      panel = VisibleWindow();
    }
    seconds = SecondsSince(start);
    if (isOver.exchange(true)) return;
    PostMessageW(panel, WM_CLOSE, 0, 0);
  });
  Cls_Application().Run(selection->AsVdRecList());
  const bool hasComeUp = isOver.exchange(true);
  user.join();
  Demand(hasComeUp, "no panel came up");
  return seconds;
}

double SecondsOfARequest(const Ref<AnyObject>& object) {
  const auto start = Clock::now();
  for (int i = 0; i < kBareRequests; ++i) object->Name();
  return SecondsSince(start) / kBareRequests;
}

bool OpeningOverProcesses() {
  const Folder folder;
  const OtherProcess process(std::string(kServeWorld) + " \"" + folder.PathOf("world") + "\"");
  const auto world = process.Attach();
  InstallPlatform(std::make_shared<BenchPlatform>(world));
  const auto selection = world->GetItem(kSelection);
  const auto counter = world->GetItem(kWorldCounter);
  const double before = SecondsOfARequest(counter);
  double seconds = 0;
  const auto requests = RequestsOf(counter, [&] { seconds = SecondsToThePanel(selection); });
  const double request = (before + SecondsOfARequest(counter)) / 2;
  ResetProcess();
  std::printf(
      "from Run to a panel with %d nodes of another process: %.0f ms; %d invocations, %d ids of names, %d requests\n"
      "of the system itself, that is %.1f, %.2f and %.1f a node; a bare request takes %.3f ms\n",
      kNodes, seconds * 1000, requests.invocations, requests.names, requests.others,
      double(requests.invocations) / kNodes, double(requests.names) / kNodes, double(requests.others) / kNodes,
      request * 1000);
  return PrintFigure("panel of 1,000 nodes against as many bare requests", seconds / (requests.All() * request),
                     kBoundOfRequests);
}

bool OpeningInOneProcess() {
  const Folder folder;
  const auto world = NewWorld(folder.PathOf("world"));
  InstallPlatform(std::make_shared<BenchPlatform>(world));
  std::vector<double> ofPanel;
  std::vector<double> ofRows;
  for (int i = 0; i < kRepetitions; ++i) {
    ofPanel.push_back(SecondsToThePanel(world->GetItem(kSelection)));
    ofRows.push_back(SecondsToABareTree(kNodes));
  }
  ResetProcess();
  std::printf("from Run to a panel with %d nodes of this process: %.0f ms, a bare window with as many rows %.0f ms\n",
              kNodes, Median(ofPanel) * 1000, Median(ofRows) * 1000);
  return PrintFigure("panel of 1,000 nodes against a bare tree of as many rows", Median(ofPanel) / Median(ofRows),
                     kBoundOfRows);
}

}  // namespace

bool OpeningFigures() {
  const bool isMet = OpeningInOneProcess();
  return OpeningOverProcesses() && isMet;
}

}  // namespace quintara::bench
