#include "vrllib/core/enum_list.h"

#include <ostream>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "tests/doc/tex_file.h"
#include "vrllib/doc/texstream.h"

namespace {

using Vorlane_v1_0::EnumList;

/// One row of a table: the enumerator, the number that it has to have, and the texts.
template <class Id>
struct Row {
    char const* label;
    Id id;
    int number;
    char const* name;
    char const* tex;
};

template <class Id>
std::ostream& operator<<(std::ostream& os, Row<Id> const& row) {
    return os << row.label;
}

template <class Id>
std::string rowLabel(testing::TestParamInfo<Row<Id>> const& info) {
    return info.param.label;
}

template <class Id>
std::string texOf(Id id) {
    return texWrittenBy([=](texstream& tex) { EXPECT_EQ(&EnumList::toTex(tex, id), &tex); });
}

class SolverRows : public testing::TestWithParam<Row<EnumList::SolverID>> {};

TEST_P(SolverRows, HaveTheirNumberNameAndTex) {
    EXPECT_EQ(static_cast<int>(GetParam().id), GetParam().number);
    EXPECT_EQ(EnumList::getName(GetParam().id), GetParam().name);
    EXPECT_EQ(texOf(GetParam().id), GetParam().tex);
}

Row<EnumList::SolverID> const kSolvers[] = {
    {"UndefSolver", EnumList::UndefSolver, 0, "UndefSolver", ""},
    {"InHouseSolver", EnumList::InHouseSolver, 1, "InHouseSolver", "\\textit{In-House solver}"},
    {"GenericSolver", EnumList::GenericSolver, 2, "GenericSolver",
     "\\textit{Models/solvers from open-source / mathematics / ... without licensing}"},
    {"KestromSolver", EnumList::KestromSolver, 1000, "KestromSolver",
     "\\href{https://www.kestrom.example}{Kestrom BV}"},
    {"FilareteSolver", EnumList::FilareteSolver, 1001, "FilareteSolver",
     "\\href{https://www.filarete.example}{Filarete}"},
    {"DaglainSolver", EnumList::DaglainSolver, 1002, "DaglainSolver", "Daglain VOF"},
    {"PhotonDesignSolver", EnumList::PhotonDesignSolver, 1003, "PhotonDesignSolver",
     "\\href{https://www.photondesign.example}{PhotonDesign Ltd}"},
    {"VPIPhotonicsSolver", EnumList::VPIPhotonicsSolver, 1004, "VPIPhotonicsSolver", "{VPI Photonics}"},
    {"LumericalSolver", EnumList::LumericalSolver, 1005, "LumericalSolver", "{Lumerical}"},
    {"TUESolver", EnumList::TUESolver, 2000, "TUESolver", "\\textit{TUE}"},
    {"IMECSolver", EnumList::IMECSolver, 2001, "IMECSolver", "\\textit{IMEC"},
    {"LetiSolver", EnumList::LetiSolver, 2002, "LetiSolver", "\\textit{Leti}"},
    {"Gap3", static_cast<EnumList::SolverID>(3), 3, "UndefSolver", ""},
    {"Gap999", static_cast<EnumList::SolverID>(999), 999, "UndefSolver", ""},
    {"Gap1006", static_cast<EnumList::SolverID>(1006), 1006, "UndefSolver", ""},
    {"Gap2003", static_cast<EnumList::SolverID>(2003), 2003, "UndefSolver", ""},
    {"Negative", static_cast<EnumList::SolverID>(-1), -1, "UndefSolver", ""},
};
INSTANTIATE_TEST_SUITE_P(EnumList, SolverRows, testing::ValuesIn(kSolvers), rowLabel<EnumList::SolverID>);

class FoundryRows : public testing::TestWithParam<Row<EnumList::FoundryID>> {};

TEST_P(FoundryRows, HaveTheirNumberNameAndTex) {
    EXPECT_EQ(static_cast<int>(GetParam().id), GetParam().number);
    EXPECT_EQ(EnumList::getName(GetParam().id), GetParam().name);
    EXPECT_EQ(texOf(GetParam().id), GetParam().tex);
}

Row<EnumList::FoundryID> const kFoundries[] = {
    {"UndefFoundry", EnumList::UndefFoundry, 0, "UndefFoundry", ""},
    {"InHouseFoundry", EnumList::InHouseFoundry, 1, "InHouse Foundry", "\\textit{InHouse}"},
    {"VirtualFoundry", EnumList::VirtualFoundry, 2, "Virtual Foundry", "\\textit{Virtual / not $\\mu$optics}"},
    {"OclaroFoundry", EnumList::OclaroFoundry, 1000, "Oclaro Foundry", "\\href{https://www.oclaro.example}{Oclaro}"},
    {"SmartPhotonixFoundry", EnumList::SmartPhotonixFoundry, 1001, "SmartPhotonix Foundry", "\\textit{Cedova}"},
    {"HHIFoundry", EnumList::HHIFoundry, 1002, "UndefFoundry", "\\textit{HHI}"},
    {"CobraFoundry", EnumList::CobraFoundry, 1003, "Cobra Foundry", "\\textit{Cobra}"},
    {"IMECFoundry", EnumList::IMECFoundry, 2000, "IMEC Foundry", "\\textit{IMEC}"},
    {"LetiFoundry", EnumList::LetiFoundry, 2001, "Leti Foundry", "\\textit{Leti}"},
    {"AMSFoundry", EnumList::AMSFoundry, 2002, "AMS Foundry", "\\textit{AMS}"},
    {"AMOFoundry", EnumList::AMOFoundry, 2003, "AMO Foundry", "\\textit{AMO}"},
    {"IHPFoundry", EnumList::IHPFoundry, 2004, "IHP Foundry", "\011extit{IHP}"},
    {"OpSisIMEFoundry", EnumList::OpSisIMEFoundry, 2005, "UndefFoundry", "\\textit{OpSis-IME}"},
    {"LioniXFoundry", EnumList::LioniXFoundry, 2014, "UndefFoundry", "\\textit{LioniX}"},
    {"CIPFoundry", EnumList::CIPFoundry, 2016, "UndefFoundry", "\\textit{CIP}"},
    {"TyndallPackage", EnumList::TyndallPackage, 2019, "Tyndall package", "\011extit{Tyndall}"},
    {"Gap3", static_cast<EnumList::FoundryID>(3), 3, "UndefFoundry", ""},
    {"Gap1004", static_cast<EnumList::FoundryID>(1004), 1004, "UndefFoundry", ""},
    {"Gap2006", static_cast<EnumList::FoundryID>(2006), 2006, "UndefFoundry", ""},
    {"Gap2015", static_cast<EnumList::FoundryID>(2015), 2015, "UndefFoundry", ""},
    {"Gap2020", static_cast<EnumList::FoundryID>(2020), 2020, "UndefFoundry", ""},
    {"Negative", static_cast<EnumList::FoundryID>(-1), -1, "UndefFoundry", ""},
};
INSTANTIATE_TEST_SUITE_P(EnumList, FoundryRows, testing::ValuesIn(kFoundries), rowLabel<EnumList::FoundryID>);

class MaturityRows : public testing::TestWithParam<Row<EnumList::Maturity>> {};

TEST_P(MaturityRows, HaveTheirNumberAndName) {
    EXPECT_EQ(static_cast<int>(GetParam().id), GetParam().number);
    EXPECT_EQ(EnumList::getName(GetParam().id), GetParam().name);
}

Row<EnumList::Maturity> const kMaturities[] = {
    {"Unspecified", EnumList::Unspecified, 0, "Unspecified", ""},
    {"Research", EnumList::Research, 1, "Research", ""},
    {"Prototype", EnumList::Prototype, 2, "Prototype", ""},
    {"Series", EnumList::Series, 3, "Series", ""},
    {"Volume", EnumList::Volume, 4, "Volume", ""},
    {"Beyond", static_cast<EnumList::Maturity>(5), 5, "Unspecified", ""},
    {"Negative", static_cast<EnumList::Maturity>(-1), -1, "Unspecified", ""},
};
INSTANTIATE_TEST_SUITE_P(EnumList, MaturityRows, testing::ValuesIn(kMaturities), rowLabel<EnumList::Maturity>);

class DomainRows : public testing::TestWithParam<Row<EnumList::Domain>> {};

TEST_P(DomainRows, HaveTheirNumberAndName) {
    EXPECT_EQ(static_cast<int>(GetParam().id), GetParam().number);
    EXPECT_EQ(EnumList::getName(GetParam().id), GetParam().name);
}

Row<EnumList::Domain> const kDomains[] = {
    {"Unknown", EnumList::Unknown, 0, "Unknown", ""},
    {"Signal", EnumList::Signal, 1, "Signal", ""},
    {"Optics", EnumList::Optics, 2, "Optics", ""},
    {"DC", EnumList::DC, 3, "DC", ""},
    {"RF", EnumList::RF, 4, "RF", ""},
    {"Acoustic", EnumList::Acoustic, 5, "Acoustic", ""},
    {"Mechanic", EnumList::Mechanic, 6, "Mechanic", ""},
    {"Fluidics", EnumList::Fluidics, 7, "Fluidics", ""},
    {"Layout", EnumList::Layout, 8, "Layout", ""},
    {"DieDesign", EnumList::DieDesign, 9, "DieDesign", ""},
    {"TestBB", EnumList::TestBB, 10, "TestBB", ""},
    {"PackageBB", EnumList::PackageBB, 11, "PackageBB", ""},
    {"CBB", EnumList::CBB, 12, "CBB", ""},
    {"Beyond", static_cast<EnumList::Domain>(13), 13, "Unknown", ""},
    {"Negative", static_cast<EnumList::Domain>(-1), -1, "Unknown", ""},
};
INSTANTIATE_TEST_SUITE_P(EnumList, DomainRows, testing::ValuesIn(kDomains), rowLabel<EnumList::Domain>);

TEST(EnumListClass, PolarisationsHaveTheirNumbers) {
    EXPECT_EQ(static_cast<int>(EnumList::UnknownPol), 0);
    EXPECT_EQ(static_cast<int>(EnumList::TE), 1);
    EXPECT_EQ(static_cast<int>(EnumList::TM), 2);
    EXPECT_EQ(static_cast<int>(EnumList::FV), 3);
}

TEST(EnumListClass, IdsAre32BitsWideAndSigned) {
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<EnumList::SolverID>, int>));
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<EnumList::FoundryID>, int>));
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<EnumList::Maturity>, int>));
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<EnumList::Domain>, int>));
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<EnumList::Polarisation>, int>));
    EXPECT_EQ(sizeof(EnumList::Domain), 4U);
}

TEST(EnumListClass, IsAnEmptyValueWithAVirtualDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<EnumList>);
    EXPECT_EQ(sizeof(EnumList), sizeof(void*));
    EnumList const one;
    EnumList other(one);
    other = one;
    EXPECT_EQ(other.getName(EnumList::RF), "RF");
}

TEST(EnumListClass, ToTexChainsAndAddsNeitherLineEndNorEscapes) {
    std::string const text = texWrittenBy([](texstream& tex) {
        EnumList::toTex(EnumList::toTex(tex, EnumList::VirtualFoundry), EnumList::IMECSolver).os() << "|";
    });

    EXPECT_EQ(text, "\\textit{Virtual / not $\\mu$optics}\\textit{IMEC|");
}

TEST(EnumListClass, UnknownIdLeavesTheStreamUntouched) {
    std::string const text = texWrittenBy([](texstream& tex) {
        tex.os().width(3);
        EnumList::toTex(tex, static_cast<EnumList::SolverID>(3));
        EnumList::toTex(tex, EnumList::UndefFoundry);
        EXPECT_EQ(tex.os().width(), 3);
    });

    EXPECT_EQ(text, "");
}

TEST(EnumListClass, ToTexOnAStreamThatFailedToOpenWritesNothing) {
    texstream tex("", false);
    texstream& chained = EnumList::toTex(EnumList::toTex(tex, EnumList::TUESolver), EnumList::HHIFoundry);

    EXPECT_EQ(&chained, &tex);
    EXPECT_EQ(tex.os().rdstate(), std::ios_base::failbit);  // a write that was tried would have made it bad
}

}  // namespace
