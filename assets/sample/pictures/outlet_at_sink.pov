// Receptacle with test and reset buttons, a hand's breadth from a wet sink.
#version 3.7;
#declare BouncedLight = 1;
#include "snapshot.inc"
#include "materials.inc"

#declare Chance = seed(114);

FocusedSnapshot(<-0.10, 1.36, -0.92>, <0.08, 1.07, 0>, 47, -3, <-0.05, 1.13, 0>, 0.010)
SoftLamp(<-0.5, 2.2, -0.9>, rgb <1.8, 1.72, 1.6>, 0.5, 1.4)
light_source { <1.4, 1.9, -1.6> rgb <0.30, 0.33, 0.38> }

// ---- splashback of brick-bond tiles
#for (Row, 0, 13)
  #for (Column, -7, 7)
    object { Round_Box_Union(<0.0015, 0.0015, 0>, <0.1485, 0.0735, 0.02>, 0.003)
      rotate <Jitter(Chance, 0.25), Jitter(Chance, 0.25), 0>
      translate <Column * 0.15 + mod(Row, 2) * 0.075, 0.9 + Row * 0.075, -0.004>
      pigment { rgb <0.66, 0.72, 0.70> * (0.94 + rand(Chance) * 0.08) }
      finish { diffuse 0.72 specular 0.5 roughness 0.01 reflection { 0.02, 0.16 } } }
  #end
#end
box { <-2, 0.5, 0>, <2, 3, 0.1> pigment { rgb <0.52, 0.51, 0.48> } }

// ---- counter with an undermounted basin
#declare Counter = texture {
  pigment {
    granite turbulence 0.2
    color_map { [0 rgb <0.06, 0.055, 0.05>] [0.35 rgb <0.22, 0.19, 0.17>] [0.6 rgb <0.36, 0.32, 0.28>] [1 rgb <0.62, 0.58, 0.52>] }
    scale 0.06
  }
  finish { diffuse 0.7 specular 0.6 roughness 0.01 reflection { 0.03, 0.2 } }
}
#declare BasinAt = <0.30, 0.90, -0.30>;
difference {
  object { Round_Box_Union(<-2, 0.86, -0.62>, <2, 0.90, 0>, 0.008) }
  cylinder { <0, -1, 0>, <0, 1, 0>, 0.19 scale <1.25, 1, 1> translate BasinAt }
  texture { Counter }
}
difference {
  sphere { 0, 0.20 scale <1.25, 0.72, 1> translate BasinAt }
  sphere { 0, 0.19 scale <1.25, 0.72, 1> translate BasinAt }
  box { <-2, 0.885, -2>, <2, 2, 2> }
  texture { PorcelainTexture } interior { PorcelainInterior }
}
cylinder { <0, 0, 0>, <0, 0.006, 0>, 0.028 translate <0.30, 0.764, -0.30> texture { ChromeTexture } }
disc { <0.30, 0.80, -0.30>, y, 0.17
  pigment { rgbf <0.85, 0.92, 0.93, 0.88> } normal { ripples 0.15 frequency 40 translate <0.30, 0, -0.30> }
  finish { diffuse 0.03 specular 0.9 roughness 0.004 reflection { 0.04, 0.5 } } }

// ---- tap
union {
  cylinder { <0, 0, 0>, <0, 0.012, 0>, 0.032 }
  cylinder { <0, 0, 0>, <0, 0.20, 0>, 0.016 }
  intersection { torus { 0.07, 0.013 rotate z * 90 } box { <-1, 0, -1>, <1, 1, 1> } translate <0, 0.20, -0.07> }
  cylinder { <0, 0.20, -0.14>, <0, 0.165, -0.14>, 0.013 }
  cylinder { <0, 0.172, -0.14>, <0, 0.160, -0.14>, 0.015 }
  #for (Side, -1, 1, 2)
    cylinder { <Side * 0.11, 0, 0>, <Side * 0.11, 0.05, 0>, 0.020 }
    cylinder { <Side * 0.11, 0.05, 0>, <Side * 0.165, 0.062, -0.01>, 0.008 }
    sphere { <Side * 0.11, 0.05, 0>, 0.020 }
  #end
  texture { ChromeTexture }
  translate <0.30, 0.90, -0.065>
}
// running water and splashes
cylinder { <0.30, 0.80, -0.205>, <0.30, 1.06, -0.205>, 0.006
  pigment { rgbf <0.9, 0.95, 0.97, 0.85> } normal { bumps 0.4 scale <0.006, 0.03, 0.006> }
  finish { diffuse 0.08 specular 1 roughness 0.005 reflection 0.15 } interior { ior 1.33 } }
#for (Splash, 0, 90)
  #local X = -0.02 + Jitter(Chance, 0.26);
  sphere { 0, 0.003 + rand(Chance) * 0.006 scale <1.2, 0.35, 1> translate <X, 0.9005, -0.035 - rand(Chance) * 0.34 * (X < 0.04) - rand(Chance) * 0.03>
    pigment { rgbf <0.85, 0.9, 0.92, 0.8> } finish { diffuse 0.05 specular 1 roughness 0.004 reflection { 0.05, 0.6 fresnel on } conserve_energy } interior { ior 1.33 } }
#end

// ---- receptacle
#declare Plastic = texture { pigment { rgb <0.80, 0.79, 0.74> } finish { diffuse 0.78 specular 0.4 roughness 0.02 } }
#declare Slot = texture { pigment { rgb 0.008 } finish { diffuse 0.3 } }
#macro Contacts()   // one pair of blades over an earth pin
  box { <-0.0085, 0.001, -0.0005>, <-0.0060, 0.011, 0.001> texture { Slot } }
  box { <0.0060, 0.002, -0.0005>, <0.0085, 0.010, 0.001> texture { Slot } }
  cylinder { <0, -0.0065, -0.0005>, <0, -0.0065, 0.001>, 0.0034 texture { Slot } }
  box { <-0.0034, -0.0115, -0.0005>, <0.0034, -0.0065, 0.001> texture { Slot } }
#end
union {
  object { Round_Box_Union(<-0.038, -0.060, -0.006>, <0.038, 0.060, 0.004>, 0.004) texture { Plastic } }
  object { Round_Box_Union(<-0.0175, -0.035, -0.0095>, <0.0175, 0.035, 0>, 0.002) texture { Plastic } }
  difference {   // shadow gap round the insert
    box { <-0.0185, -0.036, -0.0062>, <0.0185, 0.036, 0> } box { <-0.0176, -0.0351, -1>, <0.0176, 0.0351, 1> } texture { Slot } }
  union { Contacts() translate <0, 0.0215, -0.0095> }
  union { Contacts() translate <0, -0.0215, -0.0095> }
  object { Round_Box_Union(<-0.013, 0.0008, -0.0118>, <0.013, 0.0075, 0>, 0.001) pigment { rgb 0.02 } finish { specular 0.3 } }
  object { Round_Box_Union(<-0.013, -0.0075, -0.0118>, <0.013, -0.0008, 0>, 0.001) pigment { rgb <0.62, 0.04, 0.03> } finish { specular 0.3 } }
  object { CentredLettering("RESET", 0.0055) translate <0, 0.0024, -0.0127> pigment { rgb 0.9 } }
  object { CentredLettering("TEST", 0.0055) translate <0, -0.0060, -0.0127> pigment { rgb 0.95 } }
  sphere { <0.0148, 0, -0.0095>, 0.0013 pigment { rgb <0.1, 0.9, 0.2> } finish { emission 0.8 } }
  #for (Side, -1, 1, 2)
    cylinder { <0, Side * 0.0485, -0.0075>, <0, Side * 0.0485, 0>, 0.0034 texture { ChromeTexture } }
    box { <-0.003, Side * 0.0485 - 0.0004, -0.0077>, <0.003, Side * 0.0485 + 0.0004, -0.006> texture { Slot } }
  #end
  scale 1.45
  translate <-0.05, 1.13, -0.006>
}

// soap and a mug with brushes
union {
  cylinder { 0, y * 0.095, 0.038 pigment { rgb <0.10, 0.25, 0.42> } finish { specular 0.5 reflection 0.03 } }
  #for (Brush, 0, 1)
    union {
      cylinder { 0, y * 0.17, 0.005 pigment { rgb (Brush = 0 ? <0.75, 0.12, 0.08> : <0.15, 0.6, 0.3>) } }
      box { <-0.006, 0.15, -0.012>, <0.006, 0.18, 0> pigment { rgb 0.85 } }
      rotate z * (Brush * 24 - 14) translate <0, 0.012, 0>
    }
  #end
  translate <-0.34, 0.90, -0.10>
}
object { Round_Box_Union(<-0.045, 0, -0.03>, <0.045, 0.028, 0.03>, 0.012) rotate y * 20 translate <-0.08, 0.90, -0.16> pigment { rgb <0.72, 0.66, 0.42> } finish { specular 0.3 } }
