"""A program that crashes, leaves early or hangs fails in that case, and its other cases still have their turn."""
import os
import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts"))
import process  # noqa: E402
from gtest_program import GtestProgram  # noqa: E402

PROGRAM = r"""
#include <gtest/gtest.h>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>
class Odd : public testing::TestWithParam<std::pair<int, int>> {};
TEST_P(Odd, First) { EXPECT_EQ(GetParam().first % 2, 1); }
INSTANTIATE_TEST_SUITE_P(P, Odd, testing::Values(std::make_pair(1, 2), std::make_pair(2, 3)));
TEST(One, Passes) {}
TEST(One, Fails) { ADD_FAILURE() << "[       OK ] One.Fails (0 ms) is only said"; }
TEST(One, Crashes) { std::raise(SIGSEGV); }
TEST(Two, FollowsUnfinishedLine) { std::printf("no newline"); }
TEST(Two, Leaves) { std::_Exit(0); }
TEST(Two, Skips) { GTEST_SKIP() << "why"; }
TEST(Two, Hangs) { std::this_thread::sleep_for(std::chrono::hours(1)); }
TEST(Three, Passes) {}
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const int status = RUN_ALL_TESTS();
  return std::getenv("LATE") ? 3 : status;
}
"""


def run(program, folder, **env):
    test = GtestProgram([program], os.path.join(folder, "flags"), dict(os.environ, **env), folder)
    test.silence = 3
    test.run()
    return test.passed, sorted(name for name, _ in test.failures), [name for name, _ in test.skipped]


def expect(found, wanted):
    if found != wanted:
        sys.exit(f"found  {found}\nwanted {wanted}")


with tempfile.TemporaryDirectory() as folder:
    program = os.path.join(folder, "program")
    subprocess.run(["g++", "-std=c++17", "-x", "c++", "-", "-o", program, "-lgtest", "-lpthread"], input=PROGRAM,
                   text=True, check=True)
    broken = ["One.Crashes", "One.Fails", "P/Odd.First/1", "Two.Hangs", "Two.Leaves"]
    expect(run(program, folder), (4, broken, ["Two.Skips"]))
    # All cases told, then a bad end: a failure of the program itself.
    expect(run(program, folder, LATE="1"), (4, sorted(broken + ["(program)"]), ["Two.Skips"]))
    expect(run(program, folder, GTEST_FILTER="no such case"), (0, ["(program)"], []))
    expect(run("/bin/true", folder), (0, ["(program)"], []))

    said = []
    expect(process.run(["sh", "-c", "sleep 20 & printf half"], said.append, silence=5), 0)
    expect(said, ["half"])
