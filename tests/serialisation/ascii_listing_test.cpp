#include "vrllib/serialisation/ascii_stream.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/serialisation/listing.h"
#include "tests/support/sample_design.h"
#include "tests/support/slots.h"

namespace {

using namespace Vorlane_v1_0;
using sample::listingOf;

/// A composite whose inside is one pad.
class Pair : public CBB {
public:
    explicit Pair(Foundry const* foundry) : BB(foundry), CBB(foundry) {
        addPort("in0", EnumList::Optics);
        Attributes::addBool("on", true);
        CBB::addBB(new sample::Pad, "p", 3);
        CBB::addNode("p", "dc0", 4);
        CBB::setInputNode(4);
    }
    ~Pair() override = default;
    std::string getName() const override { return "pair"; }
};

TEST(AsciiStream, ListsTheExampleOfAValue) {
    Value<double> width("width", 2.5, "", "um");
    EXPECT_EQ(listingOf(width), "begin <Value_Double(1)> // width[um]\n"
                                "  Annotations::1 // serID\n"
                                "  begin <Map(1)> // annotations\n"
                                "    \"vrl::attrDescr\"\n"
                                "    \"\"\n"
                                "    \"vrl::attrName\"\n"
                                "    \"width\"\n"
                                "    \"vrl::attrUnitName\"\n"
                                "    \"um\"\n"
                                "  end\n"
                                "  AttributeWithExpr::1 // serID\n"
                                "  \"\" // expr\n"
                                "  AttributeWithExpr::2 // serID\n"
                                "  0 // calc\n"
                                "  Value::1 // serID\n"
                                "  2.5 // val\n"
                                "end\n");
}

TEST(AsciiStream, ListsANetlistWithAComposite) {
    resetUniqueIDs();
    Netlist netlist;
    netlist.addAnnotation("note", "two\nlines \"quoted\"");
    netlist.addDouble("length", 0.1, "total", "mm");
    netlist.addBB((new Pair(nullptr))->getAsBB(), "c1", 1);
    netlist.addBB(new sample::Pad, "d", 2);
    netlist.addNode("c1", "in0", 7);
    netlist.setInputNode(7);
    netlist.setOutputNode(8);
    netlist.setDCNode(9);

    EXPECT_EQ(listingOf(netlist), R"(begin <Netlist(1)>
  Annotations::1 // serID
  begin <Map(1)> // annotations
    "note"
    "two
lines "quoted""
  end
  Attributes::1 // serID
  begin <PtrMap(1)> // attributes
    "length"
    begin <Value_Double(1)> // length[mm]
      Annotations::1 // serID
      begin <Map(1)> // annotations
        "vrl::attrDescr"
        "total"
        "vrl::attrName"
        "length"
        "vrl::attrUnitName"
        "mm"
      end
      AttributeWithExpr::1 // serID
      "" // expr
      AttributeWithExpr::2 // serID
      0 // calc
      Value::1 // serID
      0.1 // val
    end
  end
  Netlist::1 // serID
  1 // numBB
  Netlist::2 // serID
  1 // nodeCount
  Netlist::3 // serID
  begin <Map(1)> // nameToBB
    "c1"
    1
    "d"
    2
  end
  Netlist::4 // serID
  begin <Map(1)> // portToNode
    "c1"
    "in0"
    7
  end
  Netlist::5 // serID
  begin <Vector(1)> // inputNodes
    7
  end
  Netlist::6 // serID
  begin <Vector(1)> // outputNodes
    8
  end
  Netlist::7 // serID
  begin <PtrMap(1)> // BBList
    1
    begin <pair(1)>
      Annotations::1 // serID
      begin <Map(1)> // annotations
      end
      Attributes::1 // serID
      begin <PtrMap(1)> // attributes
        "on"
        begin <Value_bool(1)> // on[]
          Annotations::1 // serID
          begin <Map(1)> // annotations
            "vrl::attrDescr"
            ""
            "vrl::attrName"
            "on"
            "vrl::attrUnitName"
            ""
          end
          AttributeWithExpr::1 // serID
          "" // expr
          AttributeWithExpr::2 // serID
          0 // calc
          Value::1 // serID
          1 // val
        end
      end
      BB::1 // serID
      begin <Foundry::CSInfo(1)> // defaultCS
        CSInfo::1 // serID
        "" // default CS name
        CSInfo::2 // serID
        "" // default Flow name
      end
      BB::2 // serID
      "" // foundryName
      BB::3 // serID
      begin <Vector(1)> // ports
        "in0"
        begin <BB::Port(1)> // in0
          Port::1 // serID
          begin <Foundry::CSInfo(1)> // currCS
            CSInfo::1 // serID
            "" // default CS name
            CSInfo::2 // serID
            "" // default Flow name
          end
        end
      end
      Netlist::1 // serID
      1 // numBB
      Netlist::2 // serID
      1 // nodeCount
      Netlist::3 // serID
      begin <Map(1)> // nameToBB
        "p"
        3
      end
      Netlist::4 // serID
      begin <Map(1)> // portToNode
        "p"
        "dc0"
        4
      end
      Netlist::5 // serID
      begin <Vector(1)> // inputNodes
        4
      end
      Netlist::6 // serID
      begin <Vector(1)> // outputNodes
      end
      Netlist::7 // serID
      begin <PtrMap(1)> // BBList
        3
        begin <pad(1)>
          Annotations::1 // serID
          begin <Map(1)> // annotations
          end
          Attributes::1 // serID
          begin <PtrMap(1)> // attributes
          end
          BB::1 // serID
          begin <Foundry::CSInfo(1)> // defaultCS
            CSInfo::1 // serID
            "" // default CS name
            CSInfo::2 // serID
            "" // default Flow name
          end
          BB::2 // serID
          "" // foundryName
          BB::3 // serID
          begin <Vector(1)> // ports
            "dc0"
            begin <BB::Port(1)> // dc0
              Port::1 // serID
              begin <Foundry::CSInfo(1)> // currCS
                CSInfo::1 // serID
                "" // default CS name
                CSInfo::2 // serID
                "" // default Flow name
              end
            end
          end
        end
      end
      Netlist::8 // serID
      begin <Vector(1)> // DCNodes
      end
    end
    2
    begin <pad(1)>
      Annotations::1 // serID
      begin <Map(1)> // annotations
      end
      Attributes::1 // serID
      begin <PtrMap(1)> // attributes
      end
      BB::1 // serID
      begin <Foundry::CSInfo(1)> // defaultCS
        CSInfo::1 // serID
        "" // default CS name
        CSInfo::2 // serID
        "" // default Flow name
      end
      BB::2 // serID
      "" // foundryName
      BB::3 // serID
      begin <Vector(1)> // ports
        "dc0"
        begin <BB::Port(1)> // dc0
          Port::1 // serID
          begin <Foundry::CSInfo(1)> // currCS
            CSInfo::1 // serID
            "" // default CS name
            CSInfo::2 // serID
            "" // default Flow name
          end
        end
      end
    end
  end
  Netlist::8 // serID
  begin <Vector(1)> // DCNodes
    9
  end
end
)");
}

}  // namespace
