#include "booklet/preamble.h"

#include <ostream>

#include "booklet/tex_text.h"
#include "text/table.h"

namespace vrltool::booklet {

namespace {

constexpr char kPreamble[] = R"tex(\documentclass[10pt,a4paper,oneside]{report}
\usepackage[T1]{fontenc}
\usepackage[utf8]{inputenc}
\usepackage{textcomp}
\usepackage[scaled=0.92]{helvet}
\renewcommand{\familydefault}{\sfdefault}
\usepackage[a4paper,margin=24mm,headheight=14pt]{geometry}
\usepackage{array,booktabs,longtable}
\usepackage{fancyhdr}
\usepackage{tikz}
\usepackage{hyperref}

% The same text makes the same file.
\ifdefined\pdfinfoomitdate \pdfinfoomitdate=1 \fi
\ifdefined\pdftrailerid \pdftrailerid{} \fi
\ifdefined\pdfsuppressptexinfo \pdfsuppressptexinfo=-1 \fi

\definecolor{vrlink}{RGB}{20,60,110}
\definecolor{vrlpale}{RGB}{236,241,247}
\definecolor{vrloptical}{RGB}{0,90,170}
\definecolor{vrldirect}{RGB}{190,30,45}
\definecolor{vrlradio}{RGB}{200,110,0}
\hypersetup{colorlinks=true,linkcolor=vrlink,bookmarksopen=true,bookmarksnumbered=true,pdfstartview={FitH}}

% Chances to break a name at its parts, and a long word anywhere; a character or a byte that has no letter.
\DeclareRobustCommand{\vrlpart}{\penalty1000\relax}
\DeclareRobustCommand{\vrlbreak}{\penalty5000\relax}
\DeclareRobustCommand{\vrlchar}[1]{{\footnotesize[U+#1]}}
\DeclareRobustCommand{\vrlbyte}[1]{{\footnotesize[0x#1]}}
\pdfstringdefDisableCommands{\def\vrlpart{}\def\vrlbreak{}\def\vrlchar#1{[U+#1]}\def\vrlbyte#1{[0x#1]}%
  \def\ensuremath#1{?}}

% Columns of a share of the width: P of prose, N of names, which are not hyphenated.
\setlength{\tabcolsep}{4pt}
\newlength{\vrlwidth}
\setlength{\vrlwidth}{\dimexpr\textwidth+2\tabcolsep\relax}
\newcolumntype{P}[1]{>{\raggedright\arraybackslash\hspace{0pt}}p{\dimexpr#1\vrlwidth-2\tabcolsep\relax}}
\newcolumntype{N}[1]{>{\raggedright\arraybackslash\hyphenpenalty=10000 \exhyphenpenalty=10000
  \hspace{0pt}}p{\dimexpr#1\vrlwidth-2\tabcolsep\relax}}
\setlength{\LTleft}{0pt}
\setlength{\LTright}{\fill}
\setlength{\LTpre}{2pt}
\setlength{\LTpost}{6pt}

\setcounter{secnumdepth}{1}
\setcounter{tocdepth}{1}
\setlength{\parindent}{0pt}
\setlength{\parskip}{4pt}
\setlength{\emergencystretch}{3em}
\raggedbottom
\newcommand{\vrlneed}[1]{\par\ifdim\pagetotal>0pt \ifdim\dimexpr\pagegoal-\pagetotal\relax<#1\relax
  \newpage\fi\fi}
\newcommand{\vrlhead}[1]{\textbf{#1}}
\makeatletter
\renewcommand{\@makechapterhead}[1]{{\raggedright\Huge\bfseries\color{vrlink}\thechapter\quad #1\par}%
  \vspace{3mm}{\color{vrlink}\hrule height 1pt}\vspace{8mm}}
\renewcommand{\@makeschapterhead}[1]{{\raggedright\Huge\bfseries\color{vrlink}#1\par}%
  \vspace{3mm}{\color{vrlink}\hrule height 1pt}\vspace{8mm}}
\renewcommand{\l@section}{\@dottedtocline{1}{1.5em}{3em}}
\renewcommand{\section}{\@startsection{section}{1}{0pt}{-7mm}{3mm}{\raggedright\Large\bfseries\color{vrlink}}}
\renewcommand{\subsection}{\@startsection{subsection}{2}{0pt}{-4mm}{1.5mm}{\raggedright\normalsize\bfseries}}
\makeatother

\tikzset{
  block/.style={draw=vrlink, line width=0.8pt, fill=vrlpale, rounded corners=1mm, align=center, font=\bfseries},
  composite/.style={block, double=white, double distance=1.2pt},
  port/.style={font=\footnotesize, text=black, inner sep=1mm},
  optical/.style={vrloptical, line width=1.4pt},
  direct/.style={vrldirect, line width=0.9pt, dashed},
  radio/.style={vrlradio, line width=0.9pt, dash pattern=on 3pt off 1.5pt on 1pt off 1.5pt},
  other/.style={gray, line width=0.9pt, dotted},
  hidden/.style={draw=none}}

% A picture, made smaller if it is wider than the page.
\newsavebox{\vrlbox}
\newenvironment{vrlpicture}{\begin{lrbox}{\vrlbox}\begin{tikzpicture}[x=1mm, y=1mm]}{\end{tikzpicture}\end{lrbox}%
  \begin{center}\ifdim\wd\vrlbox>\linewidth \resizebox{\linewidth}{!}{\usebox{\vrlbox}}\else
  \usebox{\vrlbox}\fi\end{center}}

\pagestyle{fancy}
\fancyhf{}
\renewcommand{\headrulewidth}{0.4pt}
\fancypagestyle{plain}{\fancyhf{}\fancyfoot[R]{\thepage}\renewcommand{\headrulewidth}{0pt}}
\fancyfoot[R]{\thepage}
)tex";

void writeTitlePage(std::ostream& os, FoundryFacts const& facts) {
    os << "\\begin{titlepage}\n\\raggedright\n\\vspace*{45mm}\n{\\color{vrlink}\\hrule height 2pt}\n\\vspace{10mm}\n"
       << "{\\fontsize{32}{38}\\selectfont\\bfseries\\color{vrlink}" << texName(facts.name) << "\\par}\n\\vspace{6mm}\n"
       << "{\\Large " << texText(facts.description) << "\\par}\n\\vspace{10mm}\n{\\color{vrlink}\\hrule height 2pt}\n"
       << "\\vspace{10mm}\n{\\large Building blocks, process flows and cross sections\\par}\n\\vfill\n"
       << counted(facts.blocks.size(), "building block") << "\\par\n"
       << counted(facts.flows.size(), "process flow") << "\\par\n"
       << counted(facts.sections.size(), "cross section") << "\\par\n\\end{titlepage}\n";
}

}  // namespace

void writePreamble(std::ostream& os, FoundryFacts const& facts) {
    std::string const head = shortened(facts.name, 40);
    os << kPreamble << "\\fancyhead[L]{\\small " << texText(head) << "}\n\\hypersetup{pdftitle={" << texText(head)
       << "}}\n\n\\begin{document}\n";
    writeTitlePage(os, facts);
    os << "\\pagenumbering{roman}\n\\tableofcontents\n\\clearpage\n\\pagenumbering{arabic}\n";
}

}  // namespace vrltool::booklet
