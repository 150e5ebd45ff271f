#include "vrllib/doc/texstream.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr char kPreamble[] = R"tex(\documentclass[10pt,a4paper,leqno]{book}
\parindent 0.25cm
\parskip 0.2cm
\topmargin 0.2cm
\oddsidemargin 0.5cm
\evensidemargin 0.5cm
\textwidth 16cm
\textheight 24cm
% Just some includes too

\usepackage{amsmath,amssymb,amsfonts} % Typical maths resource packages
\usepackage{graphicx}                 % Packages to allow inclusion of graphics
\usepackage{hyperref}                 % For creating hyperlinks in cross references
\usepackage{longtable}
\usepackage{colortbl}                 % For using colors in tables
\usepackage{lastpage}
\usepackage{float}
\usepackage{wrapfig}
\usepackage{eurosym}

% Default layout
\parindent      0.25cm
\parskip        0.2cm
\topmargin      0.2cm
\oddsidemargin  0.5cm
\evensidemargin 0.5cm
\textwidth      16cm
\textheight     24cm
\hypersetup{
  pdftoolbar=true,
  pdfmenubar=true,
  pdffitwindow=true,
  pdffitwindow=true,
  pdfauthor={Kestrom Software},
  bookmarks=true,bookmarksopen=true,
  colorlinks=true,
  urlcolor=blue,
  pdfstartview={FitH},pdfpagemode={UseThumbs},pdfpagelayout={TwoColumnLeft}
  }
% Include big png over full width (file)
\newcommand{\vrlpictbig}[1]{
\includegraphics[width=\hsize]{#1}
}
% Include big png over 3/4 width (file)
\newcommand{\vrlpictmid}[1]{
\includegraphics[width=0.75\hsize]{#1}
}
% Include big png over 1/2 width (file)
\newcommand{\vrlpictsml}[1]{
\includegraphics[width=0.5\hsize]{#1}
}

\newfloat{pngfloat}{ht}{lof}
\newcounter{ksfigure}
% Big float pict (anchor,title,pict}
\newcommand{\vrlfloatpictbig}[3]{
\refstepcounter{ksfigure}
\begin{pngfloat} \fbox{\vbox{
  \hbox to \hsize{\hfil \includegraphics[width=\hsize]{#3} \label{fig:#1} \hfil} \break
  \vskip 2pt
  \hbox to \hsize{\vbox{Figure \theksfigure : #2}}
  }}
\end{pngfloat}
}

% Big float pict (anchor,title,pict}
\newcommand{\vrlfloatpictmid}[3]{
\refstepcounter{ksfigure}
\begin{pngfloat} \fbox{\vbox{
  \hbox to \hsize{\hfil \includegraphics[width=0.75\hsize]{#3} \label{fig:#1} \hfil} \break
  \vskip 2pt
  \hbox to \hsize{\vbox{Figure \theksfigure : #2}}
  }}
\end{pngfloat}
}

% Big float pict (anchor,title,pict}
\newcommand{\vrlfloatpictsml}[3]{
\refstepcounter{ksfigure}
\begin{pngfloat} \fbox{\vbox{
  \hbox to \hsize{\hfil \includegraphics[width=0.5\hsize]{#3} \label{fig:#1} \hfil} \break
  \vskip 2pt
  \hbox to \hsize{\vbox{Figure \theksfigure : #2}}
  }}
\end{pngfloat}
}
%link to picture, (anchor)
\def\linkfig#1{figure \ref{fig:#1}}
\begin{document}
\pagenumbering{arabic}

\def\cp{\emph{cp}}
\def\textmu{$\mu$}

)tex";

constexpr char const* kSections[] = {
    "chapter{", "section{", "subsection{", "subsubsection{", "paragraph{", "subparagraph{", "textbf{",
};

char const* sectionCommand(std::int64_t level) {
    bool const known = level >= 0 && level < static_cast<std::int64_t>(std::size(kSections));
    return known ? kSections[level] : "emph{";
}

bool isSpecial(char letter) { return letter == '$' || letter == '_'; }

std::string orEmpty(char const* text) { return text ? text : ""; }

}  // namespace

// Binary, so that the system does not change the line ends.
texstream::texstream(char const* file, bool writeHeader)
    : fileName(orEmpty(file)), out(fileName, std::ios_base::binary | std::ios_base::trunc) {
    if (writeHeader) header();
}

texstream::~texstream() = default;

texstream& texstream::header() {
    out << kPreamble;
    return *this;
}

texstream& texstream::footer() {
    out << "\\end{document}\n";
    return *this;
}

void texstream::close(bool writeFooter) {
    if (!isOpen) return;
    if (writeFooter) footer();
    out.close();  // sets the fail bit itself if closing fails
    isOpen = false;
}

void texstream::pdf() { close(true); }
void texstream::rtf() { close(true); }

texstream& texstream::docHdrInc() {
    docHdr = static_cast<std::int32_t>(static_cast<std::uint32_t>(docHdr) + 1U);  // wraps without harm
    return *this;
}

texstream& texstream::docHdrDec() {
    docHdr = static_cast<std::int32_t>(static_cast<std::uint32_t>(docHdr) - 1U);
    return *this;
}

texstream& texstream::docHeader(std::string const& title, int level) {
    out << "\n\n\\" << sectionCommand(std::int64_t{docHdr} + level) << id2tex(title) << "}\n\n";
    return *this;
}

texstream& texstream::label(char const* prefix, char const* name) { return label(prefix, orEmpty(name)); }

texstream& texstream::label(char const* prefix, std::string name) {
    out << "\\label{" << orEmpty(prefix) << id2ref(name) << "} ";
    return *this;
}

texstream& texstream::ref(char const* prefix, char const* name) { return ref(prefix, orEmpty(name)); }

texstream& texstream::ref(char const* prefix, std::string name) {
    out << "\\ref{" << orEmpty(prefix) << id2ref(name) << "} ";
    return *this;
}

std::string texstream::id2tex(std::string const& id) {
    std::string text;
    for (char const letter : id) {
        if (isSpecial(letter)) text += '\\';
        text += letter;
    }
    return text;
}

std::string texstream::id2ref(std::string const& id) {
    std::string text;
    std::remove_copy_if(id.begin(), id.end(), std::back_inserter(text), isSpecial);
    return text;
}
