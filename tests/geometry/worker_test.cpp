#include "geometry/worker.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <stdexcept>
#include <thread>

#include "base/failure.h"
#include "geometry/geometry_fixture.h"

namespace quintara::test {
namespace {

using testing::HasSubstr;

const WorkerTask kTask = {"x.stp", "could not be read", "reader", 60};

std::string Employ(const std::function<std::string(const Progress&)>& body, const Progress& progress = {}) {
  return RunInWorker(kTask, body, progress);
}

TEST(Worker, GivesTheBytesOfItsBody) {
  const std::string bytes(3'000'000, '\0');

  EXPECT_EQ(Employ([&](const Progress&) { return bytes; }), bytes);
}

TEST(Worker, TellsItsProgressInOrder) {
  std::vector<std::pair<double, std::string>> told;

  Employ(
      [](const Progress& tell) {
        tell(0.25, "a");
        tell(1, "b");
        return std::string();
      },
      [&](double fraction, const std::string& what) { told.emplace_back(fraction, what); });

  EXPECT_EQ(told, (std::vector<std::pair<double, std::string>>{{0.25, "a"}, {1.0, "b"}}));
}

TEST(Worker, ChangesNothingInThisProcess) {
  int number = 1;

  Employ([&](const Progress&) { return std::to_string(number = 2); });

  EXPECT_EQ(number, 1);
}

TEST(Worker, HandsOnAFailureAsItIs) {
  try {
    Employ([](const Progress&) -> std::string { throw Failure(failure::kFileNotFound, "y.stp: is missing"); });
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Number(), failure::kFileNotFound);
    EXPECT_EQ(failure.Description(), "y.stp: is missing");
  }
}

TEST(Worker, NamesTheFileWithAForeignException) {
  const auto text =
      FailureOf([] { Employ([](const Progress&) -> std::string { throw std::runtime_error("no luck"); }); });

  EXPECT_EQ(text, "x.stp: could not be read (no luck)");
}

TEST(Worker, MakesACrashAFailure) {
  const auto text = FailureOf([] {
    Employ([](const Progress&) {
      raise(SIGSEGV);
      return std::string();
    });
  });

  EXPECT_EQ(text, "x.stp: could not be read (the reader ended with signal " + std::to_string(SIGSEGV) + ")");
}

TEST(Worker, MakesAnEarlyExitAFailure) {
  const auto text = FailureOf([] { Employ([](const Progress&) -> std::string { _exit(3); }); });

  EXPECT_EQ(text, "x.stp: could not be read (the reader ended with code 3)");
}

TEST(Worker, EndsABodyThatNeverDoes) {
  const WorkerTask oneSecond = {"x.stp", "could not be read", "reader", 1};
  volatile bool forever = true;

  const auto text = FailureOf([&] {
    RunInWorker(oneSecond,
                [&](const Progress&) {
                  while (forever) {
                  }
                  return std::string();
                },
                {});
  });

  EXPECT_EQ(text, "x.stp: could not be read (the reader came to no end)");
}

TEST(Worker, IsGoneWhenTheListenerFails) {
  const auto body = [](const Progress& tell) {
    tell(0, std::to_string(getpid()));
    pause();
    return std::string();
  };
  pid_t worker = 0;
  const auto listener = [&](double, const std::string& what) {
    worker = std::stoi(what);
    throw std::runtime_error("cancelled");
  };

  EXPECT_THROW(Employ(body, listener), std::runtime_error);

  ASSERT_GT(worker, 0);
  EXPECT_NE(kill(worker, 0), 0);
}

TEST(Worker, PrintsNothing) {
  testing::internal::CaptureStdout();

  Employ([](const Progress&) {
    const std::string noise = "noise\n";
    EXPECT_EQ(write(STDOUT_FILENO, noise.data(), noise.size()), static_cast<ssize_t>(noise.size()));
    return std::string();
  });

  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST(Worker, DiesWithItsParent) {
  int ends[2] = {};
  ASSERT_EQ(pipe(ends), 0);
  const auto parent = fork();
  if (parent == 0) {
    close(ends[0]);
    Employ([](const Progress&) {
      pause();
      return std::string();
    });
    _exit(EXIT_SUCCESS);
  }
  close(ends[1]);
  std::this_thread::sleep_for(std::chrono::milliseconds(200));

  kill(parent, SIGKILL);
  waitpid(parent, nullptr, 0);

  // The pipe ends when nobody holds it any more, the worker included.
  char byte = 0;
  EXPECT_EQ(read(ends[0], &byte, 1), 0);
  close(ends[0]);
}

}  // namespace
}  // namespace quintara::test
