#include <map>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "vrllib/vrllib.h"

// Objects with equal annotations share one map inside. Nobody may notice: neither by a change, nor by an iterator or a
// map that was handed out before.

namespace {

using namespace Vorlane_v1_0;

using Map = std::map<std::string, std::string>;
using Number = Value<double>;

/// Some of it is done for annotations that many objects share.
class SharedAnnotations : public testing::Test {
protected:
    std::vector<Number> const others = std::vector<Number>(8, Number("n", 0, "d", "u"));
};

Map annotationsOf(Annotations const& object) { return {object.beginAnnotation(), object.endAnnotation()}; }

TEST_F(SharedAnnotations, AreLeftAloneByTheChangeOfOneObject) {
    Number a("n", 1, "d", "u"), b("n", 2, "d", "u"), c(a);
    a.setAnnotation("vrl::attrUnitName", "mm");
    b.addAnnotation("key", "text");
    c.delAnnotation("vrl::attrDescr");
    EXPECT_EQ(annotationsOf(a), (Map{{"vrl::attrDescr", "d"}, {"vrl::attrName", "n"}, {"vrl::attrUnitName", "mm"}}));
    EXPECT_EQ(annotationsOf(b),
              (Map{{"key", "text"}, {"vrl::attrDescr", "d"}, {"vrl::attrName", "n"}, {"vrl::attrUnitName", "u"}}));
    EXPECT_EQ(annotationsOf(c), (Map{{"vrl::attrName", "n"}, {"vrl::attrUnitName", "u"}}));
    EXPECT_EQ(Number("n", 3, "d", "u").getUnits(), "u");
}

TEST_F(SharedAnnotations, KeepIteratorsAndMapsThatWereHandedOut) {
    Number a("n", 1, "d", "u");
    Number const& constant = a;
    Map const& list = constant.list();
    auto const unit = constant.beginAnnotation();
    a.setAnnotation("vrl::attrDescr", "changed");
    EXPECT_EQ(unit->second, "changed");
    EXPECT_EQ(list.at("vrl::attrDescr"), "changed");
    auto const changing = a.beginAnnotation();
    changing->second = "by iterator";
    EXPECT_EQ(a.getDescr(), "by iterator");
    EXPECT_EQ(Number("n", 1, "d", "u").getDescr(), "d");
    a = Number("m", 1, "d", "u");
    EXPECT_EQ(list.at("vrl::attrName"), "m");
    a.clear();
    EXPECT_TRUE(list.empty());
    a.addAnnotation("k", "t");
    EXPECT_EQ(list, (Map{{"k", "t"}}));
}

TEST_F(SharedAnnotations, OfACopyAreItsOwn) {
    Number a("n", 1, "d", "u");
    auto const kept = a.beginAnnotation();
    Number const copy(a);
    kept->second = "changed";
    EXPECT_EQ(copy.getDescr(), "d");
    EXPECT_EQ(a.getDescr(), "changed");
    Number target("n", 1, "d", "u");
    target.beginAnnotation()->second = "own";
    target = copy;
    EXPECT_EQ(target.getDescr(), "d");
    target.beginAnnotation()->second = "own";
    EXPECT_EQ(copy.getDescr(), "d");
}

TEST_F(SharedAnnotations, AgreeWithPlainMapsAfterEveryChange) {
    std::mt19937 random(11);
    auto const below = [&](std::size_t limit) { return static_cast<std::size_t>(random() % limit); };
    std::vector<std::unique_ptr<Number>> objects;
    std::vector<Map> expected;
    for (int i = 0; i < 12; ++i) {
        objects.push_back(std::make_unique<Number>("n", i, "d", i % 2 ? "u" : ""));
        expected.push_back({{"vrl::attrDescr", "d"}, {"vrl::attrName", "n"}, {"vrl::attrUnitName", i % 2 ? "u" : ""}});
    }
    for (int step = 0; step < 6000; ++step) {
        std::size_t const at = below(objects.size()), from = below(objects.size());
        Number* object = objects[at].get();
        Map& map = expected[at];
        std::string const key = "k" + std::to_string(below(3)), text = std::to_string(below(2));
        switch (below(7)) {
        case 0:
            object->addAnnotation(key, text);
            map.emplace(key, text);
            break;
        case 1:
            object->setAnnotation(key, text);
            map[key] = text;
            break;
        case 2:
            object->delAnnotation(key);
            map.erase(key);
            break;
        case 3:
            if (below(4) == 0) {
                object->clear();
                map.clear();
            }
            break;
        case 4:
            *object = *objects[from];
            map = expected[from];
            break;
        case 5:
            objects[at] = std::make_unique<Number>(*objects[from]);
            object = objects[at].get();
            map = Map(expected[from]);
            break;
        default:
            if (object->size() > 0) object->begin()->second = text;
            if (!map.empty()) map.begin()->second = text;
        }
        ASSERT_EQ(object->size(), map.size());
        ASSERT_EQ(object->getAnnotation(key, false), map.count(key) ? map.at(key) : "");
        if (step % 7 == 0) {
            ASSERT_EQ(annotationsOf(*object), map) << step;
        }
    }
    for (std::size_t i = 0; i < objects.size(); ++i) EXPECT_EQ(annotationsOf(*objects[i]), expected[i]);
}

/// What a read leaves of the annotations of an object that had these three.
Map readOver(std::string const& bytes, bool expected) {
    std::istringstream stream(bytes);
    BinaryStreamDeSerialiser reader(stream);
    Number target("n", 0, "d", "u");
    EXPECT_EQ(target.read(&reader), expected);
    return annotationsOf(target);
}

TEST_F(SharedAnnotations, AreReplacedByWhatWasReadUntilAFailure) {
    Number source("n", 0, "other", "u");
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    ASSERT_TRUE(source.write(&writer));
    std::string const bytes = out.str();
    EXPECT_EQ(readOver(bytes, true), annotationsOf(source));
    // Cut within the second text, within the second key, and before the first key.
    EXPECT_EQ(readOver(bytes.substr(0, bytes.find("vrl::attrName") + 13 + 6 + 6 + 4), false),
              (Map{{"vrl::attrDescr", "other"}, {"vrl::attrName", ""}}));
    EXPECT_EQ(readOver(bytes.substr(0, bytes.find("vrl::attrName") + 5), false), (Map{{"vrl::attrDescr", "other"}}));
    EXPECT_EQ(readOver(bytes.substr(0, bytes.find("vrl::attrDescr") - 4), false), Map());
    std::string wrongShape = bytes;
    wrongShape[bytes.find("Map")] = 'N';
    EXPECT_EQ(readOver(wrongShape, false), Map());
}

TEST_F(SharedAnnotations, HaveWhatWasReadUntilAnException) {
    Number source("n", 0, "other", "u");
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    ASSERT_TRUE(source.write(&writer));
    std::string const bytes = out.str();
    auto const readArmed = [&](std::size_t length) {
        std::istringstream stream(bytes.substr(0, length));
        stream.exceptions(std::ios::failbit);
        BinaryStreamDeSerialiser reader(stream);
        Number target("n", 0, "d", "u");
        EXPECT_THROW(target.read(&reader), std::ios::failure);
        return annotationsOf(target);
    };
    EXPECT_EQ(readArmed(bytes.find("vrl::attrName") + 5), (Map{{"vrl::attrDescr", "other"}}));
    EXPECT_EQ(readArmed(bytes.find("Map") - 2), Map());
}

TEST_F(SharedAnnotations, AreWrittenAsTheyAreNow) {
    Number a("n", 0, "d", "u");
    auto const saved = [&] {
        std::ostringstream out;
        BinaryStreamSerialiser writer(out);
        EXPECT_TRUE(a.write(&writer));
        return out.str();
    };
    std::string const first = saved();
    EXPECT_EQ(saved(), first);
    a.setAnnotation("vrl::attrDescr", "e");
    std::string changed = first;
    changed[first.find("vrl::attrDescr") + 14 + 6 + 6 + 4] = 'e';
    EXPECT_EQ(saved(), changed);
    a.setAnnotation("vrl::attrDescr", "d");
    EXPECT_EQ(saved(), first);
    Number within("n", 0, std::string("d\0", 2), "u");
    std::ostringstream out;
    BinaryStreamSerialiser writer(out);
    ASSERT_TRUE(within.write(&writer));
    EXPECT_EQ(readOver(out.str(), true), annotationsOf(Number("n", 0, "d", "u")));
}

}  // namespace
