#include "vrllib/core/enum_list.h"

#include <cstddef>

#include "vrllib/doc/texstream.h"

namespace Vorlane_v1_0 {

namespace {

/// The texts of one id. A null LaTeX text writes nothing.
struct Row {
    int id;
    char const* name;
    char const* tex = nullptr;
};

// The first row of each table, 0, is also that of every number that the table lacks.

constexpr Row kSolvers[] = {
    {EnumList::UndefSolver, "UndefSolver"},
    {EnumList::InHouseSolver, "InHouseSolver", "\\textit{In-House solver}"},
    {EnumList::GenericSolver, "GenericSolver",
     "\\textit{Models/solvers from open-source / mathematics / ... without licensing}"},
    {EnumList::KestromSolver, "KestromSolver", "\\href{https://www.kestrom.example}{Kestrom BV}"},
    {EnumList::FilareteSolver, "FilareteSolver", "\\href{https://www.filarete.example}{Filarete}"},
    {EnumList::DaglainSolver, "DaglainSolver", "Daglain VOF"},
    {EnumList::PhotonDesignSolver, "PhotonDesignSolver", "\\href{https://www.photondesign.example}{PhotonDesign Ltd}"},
    {EnumList::VPIPhotonicsSolver, "VPIPhotonicsSolver", "{VPI Photonics}"},
    {EnumList::LumericalSolver, "LumericalSolver", "{Lumerical}"},
    {EnumList::TUESolver, "TUESolver", "\\textit{TUE}"},
    {EnumList::IMECSolver, "IMECSolver", "\\textit{IMEC"},  // documents count on the open brace
    {EnumList::LetiSolver, "LetiSolver", "\\textit{Leti}"},
};

// Names and LaTeX texts differ by design: some houses have no display name, and 1001 goes by two names.
constexpr Row kFoundries[] = {
    {EnumList::UndefFoundry, "UndefFoundry"},
    {EnumList::InHouseFoundry, "InHouse Foundry", "\\textit{InHouse}"},
    {EnumList::VirtualFoundry, "Virtual Foundry", "\\textit{Virtual / not $\\mu$optics}"},
    {EnumList::OclaroFoundry, "Oclaro Foundry", "\\href{https://www.oclaro.example}{Oclaro}"},
    {EnumList::SmartPhotonixFoundry, "SmartPhotonix Foundry", "\\textit{Cedova}"},
    {EnumList::HHIFoundry, "UndefFoundry", "\\textit{HHI}"},
    {EnumList::CobraFoundry, "Cobra Foundry", "\\textit{Cobra}"},
    {EnumList::IMECFoundry, "IMEC Foundry", "\\textit{IMEC}"},
    {EnumList::LetiFoundry, "Leti Foundry", "\\textit{Leti}"},
    {EnumList::AMSFoundry, "AMS Foundry", "\\textit{AMS}"},
    {EnumList::AMOFoundry, "AMO Foundry", "\\textit{AMO}"},
    {EnumList::IHPFoundry, "IHP Foundry", "\textit{IHP}"},  // a TAB, kept
    {EnumList::OpSisIMEFoundry, "UndefFoundry", "\\textit{OpSis-IME}"},
    {EnumList::LioniXFoundry, "UndefFoundry", "\\textit{LioniX}"},
    {EnumList::CIPFoundry, "UndefFoundry", "\\textit{CIP}"},
    {EnumList::TyndallPackage, "Tyndall package", "\textit{Tyndall}"},  // a TAB, kept
};

constexpr Row kMaturities[] = {
    {EnumList::Unspecified, "Unspecified"}, {EnumList::Research, "Research"}, {EnumList::Prototype, "Prototype"},
    {EnumList::Series, "Series"},           {EnumList::Volume, "Volume"},
};

constexpr Row kDomains[] = {
    {EnumList::Unknown, "Unknown"},
    {EnumList::Signal, "Signal"},
    {EnumList::Optics, "Optics"},
    {EnumList::DC, "DC"},
    {EnumList::RF, "RF"},
    {EnumList::Acoustic, "Acoustic"},
    {EnumList::Mechanic, "Mechanic"},
    {EnumList::Fluidics, "Fluidics"},
    {EnumList::Layout, "Layout"},
    {EnumList::DieDesign, "DieDesign"},
    {EnumList::TestBB, "TestBB"},
    {EnumList::PackageBB, "PackageBB"},
    {EnumList::CBB, "CBB"},
};

template <std::size_t N>
Row const& find(Row const (&table)[N], int id) {
    for (Row const& row : table)
        if (row.id == id) return row;
    return table[0];
}

texstream& writeTex(texstream& tex, Row const& row) {
    if (row.tex) tex.os() << row.tex;
    return tex;
}

}  // namespace

EnumList::~EnumList() = default;

std::string EnumList::getName(SolverID const& id) { return find(kSolvers, id).name; }
std::string EnumList::getName(FoundryID const& id) { return find(kFoundries, id).name; }
std::string EnumList::getName(Maturity const& maturity) { return find(kMaturities, maturity).name; }
std::string EnumList::getName(Domain const& domain) { return find(kDomains, domain).name; }

texstream& EnumList::toTex(texstream& tex, SolverID const& id) { return writeTex(tex, find(kSolvers, id)); }
texstream& EnumList::toTex(texstream& tex, FoundryID const& id) { return writeTex(tex, find(kFoundries, id)); }

}  // namespace Vorlane_v1_0
