// Forced-air furnace in a basement: cabinet, plenum, flue and gas line.
#version 3.7;
#declare BouncedLight = 1;
#include "snapshot.inc"
#include "materials.inc"

#declare Chance = seed(108);

Snapshot(<0.95, 1.45, -2.6>, <0.08, 1.06, 0>, 59, 3)
Torch(<1.2, 1.7, -2.5>, <0.0, 1.1, 0>, rgb <1.35, 1.3, 1.2>, 2.6)
SoftLamp(<-1.3, 2.2, -1.6>, rgb <1.3, 1.2, 1.05>, 0.6, 2.2)

// surroundings
#for (Row, 0, 12)
  #for (Block, -7, 8)
    box { <0.006, 0.006, 0>, <0.394, 0.194, 0.1>
      translate <Block * 0.4 + mod(Row, 2) * 0.2, Row * 0.2, 0.85>
      texture { ConcreteTexture(<0.55, 0.53, 0.49> * (0.92 + rand(Chance) * 0.16)) translate <Block, Row, 0> * 3 } }
  #end
#end
box { <-4, 0, 0.857>, <4, 3, 1> texture { MortarTexture } }
box { <-4, -0.1, -4>, <4, 0, 1> texture { ConcreteTexture(<0.40, 0.39, 0.37>) } }
#for (Joist, -5, 6)
  box { <-0.02, 2.34, -4>, <0.02, 2.58, 0.9> translate x * Joist * 0.4 texture { LumberTexture(FreshLumber) translate x * Joist } }
#end
box { <-4, 2.58, -4>, <4, 2.6, 1> texture { LumberTexture(OldLumber) rotate y * 90 } }

#declare CabinetTexture = texture {
  pigment { rgb <0.50, 0.47, 0.40> }
  normal { bumps 0.03 scale 0.02 }
  finish { diffuse 0.75 specular 0.3 roughness 0.03 reflection 0.03 }
}
#declare DoorTexture = texture {
  pigment { rgb <0.58, 0.55, 0.48> }
  normal { bumps 0.03 scale 0.02 }
  finish { diffuse 0.75 specular 0.3 roughness 0.03 reflection 0.03 }
}
#declare HalfWidth = 0.27;
#declare Front = -0.36;

// concrete pad and body
box { <-0.36, 0, -0.42>, <0.36, 0.06, 0.42> texture { ConcreteTexture(<0.5, 0.49, 0.46>) } }
box { <-HalfWidth, 0.06, Front>, <HalfWidth, 1.32, 0.36> texture { CabinetTexture } }

// upper door with a louvred grille and a sight glass
object { Round_Box_Union(<-HalfWidth + 0.006, 0.72, Front - 0.022>, <HalfWidth - 0.006, 1.30, Front + 0.01>, 0.008) texture { DoorTexture } }
#for (Louvre, 0, 9)
  box { <-0.19, 0, -0.012>, <0.19, 0.004, 0.012> rotate x * 35 translate <0, 1.07 + Louvre * 0.02, Front - 0.024> texture { CabinetTexture } }
  box { <-0.19, 1.073 + Louvre * 0.02, Front - 0.0225>, <0.19, 1.084 + Louvre * 0.02, Front> pigment { rgb 0.01 } }
#end
cylinder { <-0.12, 0.98, Front - 0.027>, <-0.12, 0.98, Front>, 0.028 texture { ChromeTexture } }
cylinder { <-0.12, 0.98, Front - 0.029>, <-0.12, 0.98, Front>, 0.021 pigment { rgb <0.02, 0.03, 0.06> } finish { specular 0.9 reflection 0.2 } }
sphere { <-0.12, 0.975, Front - 0.029>, 0.008 pigment { rgb <0.1, 0.3, 1.0> } finish { ambient 1 emission 1 } }
// maker's plate and warning sticker
box { <0.0, 0.93, Front - 0.0235>, <0.20, 1.02, Front> texture { ChromeTexture } }
object { CentredLettering("GAS FURNACE", 0.026) translate <0.10, 0.985, Front - 0.026> pigment { rgb 0.02 } }
object { CentredLettering("80 000 BTU", 0.022) translate <0.10, 0.948, Front - 0.026> pigment { rgb 0.02 } }
box { <0.03, 0.77, Front - 0.0235>, <0.21, 0.89, Front> pigment { rgb <0.78, 0.78, 0.72> } }
box { <0.03, 0.86, Front - 0.0240>, <0.21, 0.89, Front> pigment { rgb <0.80, 0.30, 0.02> } }
object { CentredLettering("WARNING", 0.026) translate <0.12, 0.866, Front - 0.026> pigment { rgb 0.02 } }
#for (Line, 0, 4) box { <0.042, 0.785 + Line * 0.014, Front - 0.0245>, <0.15 + rand(Chance) * 0.05, 0.790 + Line * 0.014, Front> pigment { rgb 0.2 } } #end

// blower door with handle slots
object { Round_Box_Union(<-HalfWidth + 0.006, 0.08, Front - 0.022>, <HalfWidth - 0.006, 0.705, Front + 0.01>, 0.008) texture { DoorTexture } }
#for (Side, -1, 1, 2)
  object { Round_Box_Union(<Side * 0.14 - 0.05, 0.63, Front - 0.026>, <Side * 0.14 + 0.05, 0.665, Front>, 0.008) pigment { rgb 0.04 } }
#end
#for (Slot, 0, 4) box { <-0.16, 0.16 + Slot * 0.03, Front - 0.0228>, <0.16, 0.170 + Slot * 0.03, Front> pigment { rgb 0.015 } } #end
// rust creeping up from the floor
box { <-HalfWidth - 0.0006, 0.06, Front - 0.0235>, <HalfWidth + 0.0006, 0.4, 0.36>
  pigment { granite turbulence 0.3 color_map { [0 rgbt <0.25, 0.09, 0.03, 0>] [0.25 rgbt <0.36, 0.15, 0.05, 0.4>] [0.38 rgbt 1] } scale <0.15, 0.5, 0.15> } no_shadow
}

// supply plenum above, trunk duct with cross-broken panels
box { <-HalfWidth + 0.02, 1.32, -0.10>, <HalfWidth - 0.02, 2.02, 0.34> texture { GalvanizedTexture } }
box { <-3.5, 2.00, -0.12>, <1.2, 2.30, 0.36> texture { GalvanizedTexture } }
#for (Seam, 0, 5) box { <-3.0 + Seam * 0.75, 1.985, -0.135>, <-2.97 + Seam * 0.75, 2.315, 0.37> texture { GalvanizedTexture } } #end
box { <-HalfWidth + 0.005, 1.31, -0.115>, <HalfWidth - 0.005, 1.34, 0.355> pigment { rgb <0.62, 0.62, 0.62> } finish { specular 0.4 } }
// return drop on the left with the filter slot
box { <-0.85, 0.06, -0.25>, <-0.52, 2.02, 0.25> texture { GalvanizedTexture } }
box { <-0.55, 0.10, -0.25>, <-HalfWidth, 0.62, 0.25> texture { GalvanizedTexture } }
box { <-0.31, 0.09, -0.28>, <-0.285, 0.63, -0.24> pigment { rgb <0.25, 0.35, 0.50> } }

// flue from the top front: elbow, sloping run, sheet-metal screws
#declare FlueRadius = 0.064;
union {
  cylinder { <0.05, 1.32, -0.23>, <0.05, 1.36, -0.23>, FlueRadius + 0.015 }
  cylinder { <0.05, 1.32, -0.23>, <0.05, 1.66, -0.23>, FlueRadius }
  torus { FlueRadius, 0.005 translate <0.05, 1.50, -0.23> }
  // adjustable elbow in four gores
  #for (Gore, 0, 3)
    cylinder { 0, y * 0.075, FlueRadius + 0.001 rotate -z * (Gore * 26 + 6) translate <0.05 + 0.02 * Gore * Gore, 1.64 + 0.05 * Gore - 0.008 * Gore * Gore, -0.23> }
    torus { FlueRadius + 0.001, 0.004 rotate -z * (Gore * 26) translate <0.05 + 0.02 * Gore * Gore, 1.64 + 0.05 * Gore - 0.008 * Gore * Gore, -0.23> }
  #end
  cylinder { <0.24, 1.735, -0.23>, <1.9, 1.93, 0.1>, FlueRadius }
  #for (Seam, 1, 2) torus { FlueRadius, 0.006 rotate -z * 83 rotate -y * 11 translate <0.24 + Seam * 0.55, 1.735 + Seam * 0.0645, -0.23 + Seam * 0.11> } #end
  texture { GalvanizedTexture }
}
// brown condensate stain at the joint of the elbow
cylinder { <0.05, 1.37, -0.23>, <0.05, 1.64, -0.23>, FlueRadius + 0.0008
  pigment { granite color_map { [0 rgbt <0.22, 0.10, 0.04, 0.1>] [0.3 rgbt <0.35, 0.18, 0.08, 0.6>] [0.45 rgbt 1] } scale <0.04, 0.6, 0.04> } }

// gas line with shut-off and drip leg on the right
union {
  cylinder { <0.62, 2.34, -0.1>, <0.62, 0.74, -0.1>, 0.014 }
  cylinder { <0.62, 0.92, -0.1>, <0.20, 0.92, -0.1>, 0.014 }
  cylinder { <0.62, 0.89, -0.1>, <0.62, 0.95, -0.1>, 0.021 }
  cylinder { <0.62, 0.73, -0.1>, <0.62, 0.77, -0.1>, 0.020 }
  cylinder { <0.36, 0.92, -0.1>, <0.40, 0.92, -0.1>, 0.022 }
  pigment { rgb <0.04, 0.04, 0.045> } finish { specular 0.4 }
}
cylinder { <0.62, 1.22, -0.1>, <0.62, 1.31, -0.1>, 0.022 texture { BrassTexture } }
object { Round_Box_Union(<0.605, 1.20, -0.145>, <0.635, 1.32, -0.128>, 0.005) pigment { rgb <0.75, 0.55, 0.03> } finish { specular 0.3 } }

// service switch and its conduit on the side
object { Round_Box_Union(<HalfWidth, 0.50, -0.20>, <HalfWidth + 0.05, 0.61, -0.13>, 0.004) texture { GalvanizedTexture } }
box { <HalfWidth + 0.05, 0.545, -0.172>, <HalfWidth + 0.062, 0.575, -0.160> pigment { rgb <0.7, 0.05, 0.04> } }
cylinder { <HalfWidth + 0.025, 0.61, -0.165>, <HalfWidth + 0.025, 2.34, -0.165>, 0.009 texture { GalvanizedTexture } }
