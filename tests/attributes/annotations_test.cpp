#include "vrllib/attributes/annotations.h"

#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/attributes/probes.h"
#include "tests/support/sample_design.h"

namespace {

using probes::breakerCalls;
using probes::slotOf;
using probes::streamed;
using probes::thrownBy;
using sample::printed;
using sample::readBack;
using sample::saved;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Vorlane_v1_0::Annotations;

TEST(Annotations, AreEmptyAtFirst) {
    Annotations const notes;

    EXPECT_EQ(notes.size(), 0U);
    EXPECT_EQ(notes.begin(), notes.end());
    EXPECT_THAT(notes.list(), IsEmpty());
}

TEST(Annotations, AddingATakenKeyKeepsTheOldString) {
    Annotations notes;
    notes.addAnnotation("k", "old");
    notes.addAnnotation("k", "new");

    EXPECT_THAT(notes.list(), ElementsAre(Pair("k", "old")));
}

TEST(Annotations, AddingAKeyWithAnEmptyStringKeepsTheEmptyString) {
    Annotations notes;
    notes.addAnnotation("k", "");
    notes.addAnnotation("k", "new");

    EXPECT_THAT(notes.list(), ElementsAre(Pair("k", "")));
}

TEST(Annotations, SettingATakenKeyReplacesTheString) {
    Annotations notes;
    notes.addAnnotation("k", "old");
    notes.setAnnotation("k", "new");

    EXPECT_THAT(notes.list(), ElementsAre(Pair("k", "new")));
}

TEST(Annotations, SettingAFreeKeyAddsIt) {
    Annotations notes;
    notes.setAnnotation("k", "text");

    EXPECT_THAT(notes.list(), ElementsAre(Pair("k", "text")));
}

TEST(Annotations, DeletingErasesTheOneKeyAndForgivesAnAbsentOne) {
    Annotations notes;
    notes.addAnnotation("a", "1").addAnnotation("b", "2");
    notes.delAnnotation("a");
    notes.delAnnotation("a");
    notes.delAnnotation("never there");

    EXPECT_THAT(notes.list(), ElementsAre(Pair("b", "2")));
}

TEST(Annotations, ADeletedKeyCanBeAddedAgain) {
    Annotations notes;
    notes.addAnnotation("k", "old").delAnnotation("k").addAnnotation("k", "new");

    EXPECT_EQ(notes.getAnnotation("k", true), "new");
}

TEST(Annotations, ClearErasesAll) {
    Annotations notes;
    notes.addAnnotation("a", "1").addAnnotation("vrl::attrName", "2");
    notes.clear();

    EXPECT_EQ(notes.size(), 0U);
}

TEST(Annotations, MutatorsReturnTheObject) {
    Annotations notes;

    EXPECT_EQ(&notes.addAnnotation("k", "1"), &notes);
    EXPECT_EQ(&notes.addAnnotation("k", "2"), &notes);
    EXPECT_EQ(&notes.setAnnotation("k", "3"), &notes);
    EXPECT_EQ(&notes.setAnnotation("l", "4"), &notes);
    EXPECT_EQ(&notes.delAnnotation("k"), &notes);
    EXPECT_EQ(&notes.delAnnotation("k"), &notes);
    EXPECT_EQ(&notes.clear(), &notes);
}

TEST(Annotations, ReturnsTheStringOfAKey) {
    Annotations notes;
    notes.addAnnotation("k", "text");

    EXPECT_EQ(notes.getAnnotation("k", true), "text");
    EXPECT_EQ(notes.getAnnotation("k", false), "text");
}

TEST(Annotations, AStoredEmptyStringIsPresent) {
    Annotations notes;
    notes.addAnnotation("k", "");

    EXPECT_EQ(notes.getAnnotation("k", true), "");
    EXPECT_EQ(notes.getAnnotation("k", false), "");
}

TEST(Annotations, AnAbsentKeyThatNeedNotExistReturnsAnEmptyString) {
    Annotations notes;
    notes.addAnnotation("k", "text");

    EXPECT_EQ(notes.getAnnotation("x", false), "");
}

TEST(Annotations, AnAbsentKeyThatMustExistThrowsItsMessage) {
    Annotations const notes;

    EXPECT_EQ(thrownBy<std::string>([&] { notes.getAnnotation("x", true); }), "annotation 'x' not found\n");
}

TEST(Annotations, TheThrownMessageContainsTheKeyUnchanged) {
    Annotations const notes;
    std::string const bytes("a'\n\0\xff", 5);

    EXPECT_EQ(thrownBy<std::string>([&] { notes.getAnnotation("", true); }), "annotation '' not found\n");
    EXPECT_EQ(thrownBy<std::string>([&] { notes.getAnnotation(bytes, true); }),
              std::string("annotation 'a'\n\0\xff' not found\n", 29));
}

TEST(Annotations, StayAsTheyAreWhenAKeyIsMissing) {
    Annotations notes;
    notes.addAnnotation("k", "text");
    thrownBy<std::string>([&] { notes.getAnnotation("x", true); });

    EXPECT_THAT(notes.list(), ElementsAre(Pair("k", "text")));
}

TEST(Annotations, CallTheBreakerOnceBeforeAThrowAndNeverElse) {
    Annotations notes;
    notes.addAnnotation("k", "");
    int const before = breakerCalls();

    notes.getAnnotation("k", true);
    notes.getAnnotation("x", false);
    notes.getAnnotationDefault("x", "d");
    notes.delAnnotation("x");
    EXPECT_EQ(breakerCalls(), before);
    thrownBy<std::string>([&] { notes.getAnnotation("x", true); });
    EXPECT_EQ(breakerCalls(), before + 1);
}

TEST(Annotations, TheDefaultServesAbsentKeysAndEmptyStrings) {
    Annotations notes;
    notes.addAnnotation("full", "text").addAnnotation("empty", "");

    EXPECT_EQ(notes.getAnnotationDefault("full", "d"), "text");
    EXPECT_EQ(notes.getAnnotationDefault("empty", "d"), "d");
    EXPECT_EQ(notes.getAnnotationDefault("absent", "d"), "d");
    EXPECT_EQ(notes.getAnnotationDefault("absent", ""), "");
    EXPECT_EQ(notes.size(), 2U);
}

TEST(Annotations, WalkInOrderOfTheBytesOfTheirKeys) {
    Annotations notes;
    notes.addAnnotation("b", "5").addAnnotation("\xff", "6").addAnnotation("B", "2").addAnnotation("", "1");
    notes.addAnnotation("a", "3").addAnnotation("ab", "4");
    std::vector<std::pair<std::string, std::string>> const walked(notes.begin(), notes.end());

    EXPECT_THAT(walked, ElementsAre(Pair("", "1"), Pair("B", "2"), Pair("a", "3"), Pair("ab", "4"), Pair("b", "5"),
                                    Pair("\xff", "6")));
}

TEST(Annotations, BothPairsOfIteratorsAreEqual) {
    Annotations notes;
    notes.addAnnotation("a", "1").addAnnotation("b", "2");
    Annotations const& constant = notes;

    EXPECT_EQ(notes.beginAnnotation(), notes.begin());
    EXPECT_EQ(notes.endAnnotation(), notes.end());
    EXPECT_EQ(constant.beginAnnotation(), constant.begin());
    EXPECT_EQ(constant.endAnnotation(), constant.end());
    EXPECT_EQ(std::distance(notes.begin(), notes.end()), 2);
    EXPECT_EQ(std::distance(constant.begin(), constant.end()), 2);
}

TEST(Annotations, IteratorsOfAChangeableObjectChangeStrings) {
    Annotations notes;
    notes.addAnnotation("a", "1").addAnnotation("b", "2");
    notes.begin()->second = "3";
    std::next(notes.beginAnnotation())->second = "4";

    EXPECT_THAT(notes.list(), ElementsAre(Pair("a", "3"), Pair("b", "4")));
    EXPECT_TRUE(std::is_const_v<std::remove_reference_t<decltype(*std::as_const(notes).begin())>>);
}

TEST(Annotations, TheListIsTheLiveOneAndNoCopy) {
    Annotations notes;
    auto const& list = notes.list();
    notes.addAnnotation("k", "text");

    EXPECT_EQ(&list, &notes.list());
    EXPECT_THAT(list, ElementsAre(Pair("k", "text")));
    EXPECT_TRUE((std::is_same_v<decltype(notes.list()), std::map<std::string, std::string> const&>));
}

TEST(Annotations, PrintAMarkHoweverManyThereAre) {
    Annotations notes;
    EXPECT_EQ(printed(notes), "-X-");
    EXPECT_EQ(streamed(notes), "-X-");

    notes.addAnnotation("a", "1").addAnnotation("b", "2").addAnnotation("c", "3");
    EXPECT_EQ(printed(notes), "-X-");
    EXPECT_EQ(streamed(notes), "-X-");
}

TEST(Annotations, PrintingReturnsTheStream) {
    std::ostringstream os;
    EXPECT_EQ(&Annotations().operator<<(os), &os);
}

TEST(Annotations, TakeStringsOfAnyLengthAndAnyBytes) {
    std::string const longKey(100000, 'k');
    std::string const longText(1000000, 't');
    std::string const bytes("\0\r\n\xff", 4);
    Annotations notes;
    notes.addAnnotation(longKey, longText).addAnnotation(bytes, bytes);

    EXPECT_EQ(notes.getAnnotation(longKey, true), longText);
    EXPECT_EQ(notes.getAnnotation(bytes, true), bytes);
    EXPECT_EQ(thrownBy<std::string>([&] { notes.getAnnotation(longText, true); }),
              "annotation '" + longText + "' not found\n");
}

TEST(Annotations, ACopyHasNotesOfItsOwn) {
    Annotations first;
    first.addAnnotation("k", "first");
    Annotations copy(first);
    copy.setAnnotation("k", "copy").addAnnotation("l", "new");

    EXPECT_THAT(first.list(), ElementsAre(Pair("k", "first")));
    EXPECT_THAT(copy.list(), ElementsAre(Pair("k", "copy"), Pair("l", "new")));
}

TEST(Annotations, AssignmentReplacesAllNotes) {
    Annotations from;
    from.addAnnotation("k", "from");
    Annotations to;
    to.addAnnotation("k", "to").addAnnotation("l", "to");

    EXPECT_EQ(&(to = from), &to);
    EXPECT_THAT(to.list(), ElementsAre(Pair("k", "from")));
    Annotations const& same = to;
    to = same;
    EXPECT_THAT(to.list(), ElementsAre(Pair("k", "from")));
}

TEST(Annotations, AreReadAsTheyWereSaved) {
    Annotations notes;
    notes.addAnnotation("k", "text").addAnnotation("", "");
    Annotations target;
    target.addAnnotation("old", "goes");

    EXPECT_TRUE(readBack(target, saved(notes)));
    EXPECT_THAT(target.list(), ElementsAre(Pair("", ""), Pair("k", "text")));
}

TEST(Annotations, ACopyOfWhatWasNeverSavedSavesItself) {
    Annotations source;
    source.addAnnotation("k", "source");
    Annotations copy(source);
    copy.setAnnotation("k", "copy");
    Annotations plain;
    plain.addAnnotation("k", "copy");

    EXPECT_EQ(saved(copy), saved(plain));
    EXPECT_NE(saved(copy), saved(source));
}

TEST(Annotations, TheCopyOfASavedObjectStillSavesAndFillsItsSource) {
    Annotations source;
    source.addAnnotation("k", "source");
    std::string const bytes = saved(source);
    Annotations copy(source);
    copy.setAnnotation("k", "copy");
    Annotations other;
    other.addAnnotation("k", "other");

    EXPECT_EQ(saved(copy), bytes);
    EXPECT_TRUE(readBack(copy, saved(other)));
    EXPECT_THAT(source.list(), ElementsAre(Pair("k", "other")));
    EXPECT_THAT(copy.list(), ElementsAre(Pair("k", "copy")));
}

TEST(Annotations, AssignmentTakesTheTableOfSavedMembersToo) {
    Annotations source;
    source.addAnnotation("k", "source");
    std::string const bytes = saved(source);
    Annotations target;
    saved(target);
    target = source;
    target.setAnnotation("k", "target");

    EXPECT_EQ(saved(target), bytes);
}

/// Opens the protected operations, and adds one after all of them.
struct AnnotationsTable : Annotations {
    using Annotations::getSerDoc;
    using Annotations::getSerRegister;
    using Annotations::getSerTypeName;
    using Annotations::getSerVerNo;
    virtual void next() {}
};

TEST(Annotations, KeepTheOrderOfTheirVirtualOperations) {
    EXPECT_TRUE(std::has_virtual_destructor_v<Annotations>);  // slots 0 and 1
    EXPECT_EQ(slotOf(&AnnotationsTable::getSerTypeName), 2);
    EXPECT_EQ(slotOf(&AnnotationsTable::getSerVerNo), 3);
    EXPECT_EQ(slotOf(&AnnotationsTable::getSerDoc), 4);
    EXPECT_EQ(slotOf(&AnnotationsTable::getSerRegister), 5);
    EXPECT_EQ(slotOf(&AnnotationsTable::next), 6);
}

TEST(Annotations, HaveNoOtherVirtualOperations) {
    EXPECT_EQ(slotOf(&Annotations::addAnnotation), -1);
    EXPECT_EQ(slotOf(&Annotations::getAnnotation), -1);
    EXPECT_EQ(slotOf(&Annotations::operator<<), -1);
    EXPECT_EQ(slotOf(&Annotations::write), -1);
    EXPECT_EQ(slotOf(&Annotations::read), -1);
}

TEST(Annotations, ReportTheirTypeAndVersionForSaving) {
    AnnotationsTable notes;
    notes.addAnnotation("vrl::attrName", "name");

    EXPECT_EQ(notes.getSerTypeName(), "Annotations");
    EXPECT_EQ(notes.getSerVerNo(), 1);
    EXPECT_EQ(notes.getSerDoc(), "");
}

}  // namespace
