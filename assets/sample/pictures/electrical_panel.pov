// Load centre with its door open: two columns of breakers, one of them with a
// scorched and melted face.
#version 3.7;
#declare BouncedLight = 0;
#include "snapshot.inc"
#include "materials.inc"

#declare Chance = seed(105);

FocusedSnapshot(<0.10, 1.52, -1.38>, <0.09, 1.45, 0>, 46, 2, <0.02, 1.40, -0.02>, 0.012)
Torch(<0.30, 1.75, -1.1>, <0.02, 1.42, 0>, rgb <1.55, 1.48, 1.34>, 1.2)
SoftLamp(<-1.6, 2.6, -1.5>, rgb <1.1, 1.1, 1.15>, 0.8, 2)

// block wall, painted long ago
#for (Row, 0, 10)
  #for (Block, -4, 4)
    object { Round_Box_Union(<0.004, 0.004, 0>, <0.396, 0.196, 0.1>, 0.006)
      translate <Block * 0.4 + mod(Row, 2) * 0.2 - 0.1, 0.35 + Row * 0.2, 0.06>
      pigment { rgb <0.55, 0.56, 0.52> } normal { granite 0.25 scale 0.06 } }
  #end
#end
box { <-3, 0, 0.068>, <3, 4, 0.2> texture { MortarTexture } }

#declare Enamel = texture {
  pigment { rgb <0.40, 0.42, 0.43> }
  normal { bumps 0.05 scale 0.004 }
  finish { diffuse 0.75 specular 0.35 roughness 0.03 }
}
#declare Half = 0.19;     // half the width of the box
#declare Bottom = 1.06;
#declare Top = 1.84;

// cabinet, cover and open door
box { <-Half, Bottom, -0.01>, <Half, Top, 0.06> texture { Enamel } }
object { Round_Box_Union(<-Half - 0.02, Bottom - 0.02, -0.018>, <Half + 0.02, Top + 0.02, -0.008>, 0.004) texture { Enamel } }
difference {
  box { <-Half + 0.015, Bottom + 0.03, -0.019>, <Half - 0.015, Top - 0.03, -0.014> }
  box { <-0.105, Bottom + 0.09, -1>, <0.105, Top - 0.06, 1> }
  pigment { rgb <0.34, 0.36, 0.37> } finish { specular 0.3 }
}
box { <-0.105, Bottom + 0.09, -0.0181>, <0.105, Top - 0.06, -0.012> pigment { rgb 0.02 } }
union {
  object { Round_Box_Union(<0, Bottom + 0.03, 0>, <2 * Half - 0.03, Top - 0.03, 0.012>, 0.004) texture { Enamel } }
  // circuit directory glued inside the door
  box { <0.05, Bottom + 0.12, -0.001>, <0.29, Top - 0.14, 0> pigment { rgb <0.80, 0.78, 0.68> } }
  #for (Line, 0, 13)
    box { <0.06, Top - 0.22 - Line * 0.028, -0.0015>, <0.28, Top - 0.2205 - Line * 0.028, 0> pigment { rgb 0.2 } }
    box { <0.09, Top - 0.215 - Line * 0.028, -0.0015>, <0.11 + rand(Chance) * 0.07, Top - 0.206 - Line * 0.028, 0> pigment { rgb <0.12, 0.14, 0.35> } }
    box { <0.19, Top - 0.215 - Line * 0.028, -0.0015>, <0.21 + rand(Chance) * 0.07, Top - 0.206 - Line * 0.028, 0> pigment { rgb <0.12, 0.14, 0.35> } }
  #end
  object { CentredLettering("CIRCUITS", 0.024) translate <0.17, Top - 0.18, -0.002> pigment { rgb 0.05 } }
  rotate y * 32
  translate <Half + 0.005, 0, -0.03>
}

// ---- breakers
#declare BreakerHeight = 0.042;
#declare BreakerLength = 0.098;
#declare Rating = array[4] { "15", "20", "15", "30" }
// Side is -1 for the left column, 1 for the right one; the handle points to
// the middle of the panel when the breaker is on.
#macro Breaker(Side, Label, IsOn)
  union {
    object { Round_Box_Union(<0.003, 0.001, -0.034>, <BreakerLength, BreakerHeight - 0.001, 0>, 0.002) texture { BlackPlasticTexture } }
    // raised shoulder and handle
    box { <0.012, 0.006, -0.042>, <0.060, BreakerHeight - 0.006, -0.03> texture { BlackPlasticTexture } }
    object { Round_Box_Union(<-0.007, 0, -0.022>, <0.007, BreakerHeight - 0.020, 0>, 0.002)
      rotate -y * (IsOn ? -24 : 24) translate <0.036, 0.010, -0.040> pigment { rgb <0.07, 0.07, 0.075> } finish { specular 0.3 } }
    box { <0.040, 0.030, -0.0424>, <0.058, 0.035, -0.03> pigment { rgb <0.75, 0.1, 0.06> } }
    scale <Side, 1, 1>
  }
  object { CentredLettering(Label, 0.013) translate <Side * 0.036, 0.0145, -0.064> pigment { rgb 0.9 } }
  // numbered sticker outside the breaker
  box { <Side * 0.068, 0.010, -0.0345>, <Side * 0.092, BreakerHeight - 0.010, -0.03> pigment { rgb <0.75, 0.75, 0.72> } }
  object { CentredLettering(Label, 0.018) translate <Side * 0.080, 0.015, -0.036> pigment { rgb 0.05 } }
#end

#declare Pairs = 9;
#for (Row, 0, Pairs)
  #for (Side, -1, 1, 2)
    #declare Burnt = (Row = 5 & Side = -1);
    #if (!(Row = 1 & Side = 1))
      union { Breaker(Side, Rating[mod(Row * 3 + Side + 1, 4)], !Burnt) translate <0, Bottom + 0.10 + Row * BreakerHeight, 0> }
    #else
      // blank filler plate
      box { <0.003, 0.001, -0.022>, <BreakerLength, BreakerHeight - 0.001, 0> translate <0, Bottom + 0.10 + Row * BreakerHeight, 0> texture { Enamel } }
    #end
  #end
#end

// main switch above
union {
  object { Round_Box_Union(<-0.075, 0, -0.045>, <0.075, 0.105, 0>, 0.004) texture { BlackPlasticTexture } }
  object { Round_Box_Union(<-0.022, 0.026, -0.082>, <0.022, 0.058, -0.04>, 0.004) pigment { rgb <0.06, 0.06, 0.065> } finish { specular 0.3 } }
  object { CentredLettering("MAIN", 0.020) translate <0, 0.078, -0.047> pigment { rgb 0.85 } }
  object { CentredLettering("200", 0.018) translate <0, 0.030, -0.084> pigment { rgb 0.95 } }
  object { CentredLettering("ON", 0.012) translate <-0.045, 0.05, -0.047> pigment { rgb 0.85 } }
  object { CentredLettering("OFF", 0.012) translate <0.045, 0.05, -0.047> pigment { rgb 0.85 } }
  translate y * (Bottom + 0.555)
}
object { CentredLettering("DANGER  HIGH VOLTAGE", 0.022) translate <0, Bottom + 0.052, -0.021> pigment { rgb <0.6, 0.03, 0.02> } }

// ---- scorch mark, a film of soot over the burnt breaker and the cover
#declare BurntAt = <-0.085, Bottom + 0.10 + 5.5 * BreakerHeight, 0>;
#macro Soot(Depth)
  box { <-0.24, -0.2, 0>, <0.24, 0.20, 0.0002>
    pigment {
      spherical turbulence 0.35 octaves 5 omega 0.6
      color_map {
        [0.00 rgbt <0.10, 0.06, 0.03, 1.00>]
        [0.25 rgbt <0.22, 0.12, 0.05, 0.75>]
        [0.50 rgbt <0.08, 0.045, 0.02, 0.25>]
        [1.00 rgbt <0.01, 0.008, 0.006, 0.00>]
      }
      scale <0.10, 0.14, 0.1> translate <0, 0.03, 0>
    }
    finish { diffuse 0.7 } no_shadow
    translate BurntAt + z * Depth
  }
#end
Soot(-0.0432)
Soot(-0.0470)
Soot(-0.0200)
// melted plastic
#for (Drop, 0, 9)
  sphere { 0, 0.006 + rand(Chance) * 0.004 scale <1.2, 0.6 + rand(Chance), 0.6>
    translate BurntAt + <Jitter(Chance, 0.025) + 0.01, -0.012 + Jitter(Chance, 0.012), -0.042>
    pigment { rgb <0.02, 0.014, 0.010> } normal { bumps 0.6 scale 0.006 } finish { specular 0.12 roughness 0.05 } }
#end

// conduits and cable
#for (Conduit, -1, 1)
  union {
    cylinder { <0, Top, 0.02>, <0, 3, 0.02>, 0.022 }
    cylinder { <0, Top, 0.02>, <0, Top + 0.03, 0.02>, 0.030 }
    translate x * Conduit * 0.11 texture { GalvanizedTexture }
  }
#end
#declare Cable = array[4] { <-0.16, 1.0, 0.03>, <-0.16, 0.9, 0.04>, <-0.5, 0.8, 0.05>, <-1.5, 0.8, 0.05> }
object { PipeRun(Cable, 0.010) pigment { rgb <0.75, 0.72, 0.2> } }
cylinder { <-0.16, 1.1, 0.03>, <-0.16, 1.0, 0.03>, 0.010 pigment { rgb <0.75, 0.72, 0.2> } }
