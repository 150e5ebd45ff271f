#include <gtest/gtest.h>

#include "tests/tools/sample_circuit.h"
#include "tests/tools/tool.h"

namespace {

using vrl_test::SampleCircuit;
using vrl_test::Tool;

TEST(Show, PrintsANetlistAsTheLibraryDoes) {
    Tool const tool;
    SampleCircuit circuit;
    circuit.add("bend", "sfBend").add("in", "sfEdgeCoupler").join("in,out0", "bend,in0").input("in,in0");
    circuit.save(tool.path("a.vrl"));
    auto const shown = tool.run("show", {"a.vrl"});
    EXPECT_EQ(shown.out, "Parameters{--}\n"
                         "Port{N2 -> N}\n"
                         "Building blocks{\n"
                         " bend = sfBend( mcs=>(\"strip\") in0=N1) cmpID=1\n"
                         " in = sfEdgeCoupler( mcs=>(\"strip\") in0=N2,out0=N1) cmpID=2\n"
                         " }\n");
    EXPECT_EQ(shown.err, "");
    EXPECT_EQ(shown.status, 0);
}

}  // namespace
