#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "tests/tools/diff/pair.h"

namespace {

using vrl_test::addModulator;
using vrl_test::Pair;
using vrl_test::SampleCircuit;

/// addModulator with something of everything changed.
void addChangedModulator(SampleCircuit& c) {
    c.add("in", "sfEdgeCoupler").add("mod", "sfPhaseModulator").add("split", "sfSplitter");
    c.add("arms2", "sfPushPullArms").add("join", "sfTaper").add("out", "sfEdgeCoupler").add("tap", "sfPhotodiode");
    c.join("in,out0", "mod,in0").join("mod,out0", "split,in0");
    c.join("split,out0", "arms2,in0").join("split,out1", "arms2,in1").join("split,out1", "tap,in0");
    c.join("arms2,out0", "join,in0").join("join,out0", "out,in0");
    c.input("in,in0").output("out,out0").dc("mod,ground").dc("mod,signal").dc("tap,anode");
    c.set("mod", "length", 1200);
    c.netlist().getBB("mod")->vrl::BB::getCS().setCS("strip");
    c.netlist().addDouble("wavelength", 1.55, "in vacuum", "um");
    c.netlist().setAnnotation("author", "B");
}

TEST(DiffReport, PrintsEverythingInGroups) {
    Pair const pair(addModulator, addChangedModulator);
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  > element arms2 was arms\n"
                           "  ~ element join: sfCombiner -> sfTaper\n"
                           "  + element tap (sfPhotodiode)\n"
                           "parameters\n"
                           "  + wavelength: 1.55 um\n"
                           "  - join.bodyWidth: 4 um\n"
                           "  - join.excessLoss: 0.2 dB\n"
                           "  ~ join.length: 15.5 um -> 50 um\n"
                           "  + join.widthIn: 0.45 um\n"
                           "  + join.widthOut: 2 um\n"
                           "  ~ mod.length: 1500 um -> 1200 um\n"
                           "foundries and cross sections\n"
                           "  ~ mod cross section: rib -> strip\n"
                           "notes\n"
                           "  + note 'author': \"B\"\n"
                           "connections\n"
                           "  + (arms2,in1 & split,out1) -- tap,in0\n"
                           "  - arms2,out1 -- join,in1\n"
                           "boundary\n"
                           "  > DC 2 was DC 1: mod,signal\n"
                           "  + DC 3: tap,anode\n"
                           "16 differences\n"
                           "status 1\n");
}

TEST(DiffReport, WritesTheSameAsJson) {
    Pair const pair(
        [](SampleCircuit& c) {
            c.add("bend", "sfBend").add("in", "sfTaper").add("old", "sfPhotodiode").add("path", "sfStraight");
            c.join("in,out0", "path,in0").join("path,out0", "bend,in0").input("in,in0").output("bend,out0");
            c.netlist().addString("title", "A");
        },
        [](SampleCircuit& c) {
            c.add("bend", "sfBend").add("in", "sfTaper").add("line", "sfStraight").set("bend", "radius", 20);
            c.join("in,out0", "line,in0").input("line,out0").input("in,in0").dc("bend,in0");
            c.netlist().addComplex("title", {1, -2});
            c.netlist().getBB("bend")->setExpression("width", "w");
            c.netlist().getBB("bend")->getPort("in0")->getCS().setCS("rib");
            c.netlist().setAnnotation("author", "B");
        });
    EXPECT_EQ(pair.diff({"--json", "--tolerance", "1e-9", "--ignore", "angle"}), R"({
  "format": "vrl-diff",
  "version": 2,
  "a": {
    "file": "a.vrl",
    "type": "Netlist",
    "missing": []
  },
  "b": {
    "file": "b.vrl",
    "type": "Netlist",
    "missing": []
  },
  "tolerance": {
    "relative": 1e-09,
    "absolute": 0.0
  },
  "ignored": [
    "angle"
  ],
  "notes": true,
  "renames": true,
  "differences": 11,
  "changes": [
    {
      "what": "note",
      "change": "added",
      "path": "",
      "name": "author",
      "from": null,
      "to": "B"
    },
    {
      "what": "parameter",
      "change": "changed",
      "path": "",
      "name": "title",
      "from": {
        "type": "String",
        "value": "A"
      },
      "to": {
        "type": "Complex",
        "value": {
          "re": 1.0,
          "im": -2.0
        }
      }
    },
    {
      "what": "parameter",
      "change": "changed",
      "path": "bend",
      "name": "radius",
      "from": {
        "type": "Double",
        "value": 10.0,
        "unit": "um"
      },
      "to": {
        "type": "Double",
        "value": 20.0,
        "unit": "um"
      }
    },
    {
      "what": "parameter",
      "change": "changed",
      "path": "bend",
      "name": "width",
      "from": {
        "type": "Double",
        "value": 0.45,
        "unit": "um"
      },
      "to": {
        "type": "Double",
        "value": 0.45,
        "unit": "um",
        "expression": "w"
      }
    },
    {
      "what": "crossSection",
      "change": "changed",
      "path": "bend",
      "port": "in0",
      "from": null,
      "to": "rib"
    },
    {
      "what": "element",
      "change": "renamed",
      "path": "line",
      "was": "path",
      "from": "sfStraight",
      "to": "sfStraight"
    },
    {
      "what": "element",
      "change": "removed",
      "path": "old",
      "from": "sfPhotodiode",
      "to": null
    },
    {
      "what": "input",
      "change": "added",
      "path": "",
      "from": null,
      "to": {
        "position": 1,
        "ports": [
          {
            "element": "line",
            "port": "out0"
          }
        ]
      }
    },
    {
      "what": "output",
      "change": "removed",
      "path": "",
      "from": {
        "position": 1,
        "ports": [
          {
            "element": "bend",
            "port": "out0"
          }
        ]
      },
      "to": null
    },
    {
      "what": "dc",
      "change": "added",
      "path": "",
      "from": null,
      "to": {
        "position": 1,
        "ports": [
          {
            "element": "bend",
            "port": "in0"
          }
        ]
      }
    },
    {
      "what": "connection",
      "change": "disconnected",
      "path": "",
      "groups": [
        [
          {
            "element": "bend",
            "port": "in0"
          }
        ],
        [
          {
            "element": "line",
            "port": "out0"
          }
        ]
      ]
    }
  ],
  "uncompared": []
}
status 1
)");
}

TEST(DiffReport, WithoutDifferencesHasEveryMemberInJson) {
    Pair const pair(addModulator, addModulator);
    EXPECT_EQ(pair.diff({"--json"}), R"({
  "format": "vrl-diff",
  "version": 2,
  "a": {
    "file": "a.vrl",
    "type": "Netlist",
    "missing": []
  },
  "b": {
    "file": "b.vrl",
    "type": "Netlist",
    "missing": []
  },
  "tolerance": {
    "relative": 0.0,
    "absolute": 0.0
  },
  "ignored": [],
  "notes": true,
  "renames": true,
  "differences": 0,
  "changes": [],
  "uncompared": []
}
status 0
)");
}

TEST(DiffReport, EscapesControlCharacters) {
    Pair const pair([](SampleCircuit&) {}, [](SampleCircuit& c) { c.add("a\x1b[2J\nb", "sfTaper"); });
    EXPECT_EQ(pair.diff(), "elements\n"
                           "  + element a\\x1B[2J\\x0Ab (sfTaper)\n"
                           "1 difference\n"
                           "status 1\n");
}

/// Ten thousand elements in rows of a hundred, connected from neighbour to neighbour; added and connected in an order
/// that follows from the seed.
Pair::Build mesh(unsigned seed) {
    return [=](SampleCircuit& c) {
        std::vector<int> order(10000);
        for (int i = 0; i < 10000; ++i) order[static_cast<std::size_t>(i)] = i;
        std::shuffle(order.begin(), order.end(), std::mt19937(seed));
        auto const name = [](int i) { return "e" + std::to_string(i); };
        for (int const i : order) c.add(name(i), i % 3 == 0 ? "sfBend" : "sfStraight");
        for (int const i : order)
            if (i % 100 != 99) c.join(name(i) + ",out0", name(i + 1) + ",in0");
        for (int i = 0; i < 10000; i += 100) c.input(name(i) + ",in0");
    };
}

TEST(DiffReport, IsEmptyForTenThousandElementsAgainstAShuffledCopy) {
    Pair const pair(mesh(1), mesh(2));
    EXPECT_EQ(pair.diff(), "no differences\n"
                           "status 0\n");
}

}  // namespace
