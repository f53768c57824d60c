// Gas water heater in a basement: copper lines, vent connector and a relief
// valve whose discharge pipe runs down the side.
#version 3.7;
#declare BouncedLight = 1;
#include "snapshot.inc"
#include "materials.inc"

#declare Chance = seed(106);

Snapshot(<0.55, 1.40, -2.5>, <-0.02, 1.02, 0>, 58, -2)
Torch(<0.75, 1.6, -2.2>, <0.05, 1.1, 0>, rgb <1.25, 1.2, 1.1>, 2.6)
SoftLamp(<-1.5, 2.6, -1.2>, rgb <1.4, 1.32, 1.2>, 0.7, 2.2)

// block wall and floor
#for (Row, 0, 13)
  #for (Block, -6, 6)
    box { <0.006, 0.006, 0>, <0.394, 0.194, 0.1>
      translate <Block * 0.4 + mod(Row, 2) * 0.2, Row * 0.2, 0.75>
      texture { ConcreteTexture(<0.52, 0.51, 0.49> * (0.92 + rand(Chance) * 0.16)) translate <Block, Row, 0> * 3 } }
  #end
#end
box { <-4, 0, 0.757>, <4, 3, 0.9> texture { MortarTexture } }
box { <-4, -0.1, -4>, <4, 0, 1> texture { ConcreteTexture(<0.42, 0.41, 0.39>) } }
// joists overhead
#for (Joist, -4, 4)
  box { <-0.02, 2.32, -4>, <0.02, 2.56, 0.8> translate x * Joist * 0.4 texture { LumberTexture(FreshLumber) translate x * Joist } }
#end
box { <-4, 2.56, -4>, <4, 2.6, 1> texture { LumberTexture(OldLumber) rotate y * 90 } }

#declare Jacket = texture {
  pigment { rgb <0.74, 0.74, 0.71> }
  normal { bumps 0.02 scale 0.3 }
  finish { diffuse 0.75 specular 0.45 roughness 0.02 reflection { 0.05 } }
};
#declare TankRadius = 0.27;

// drain pan
difference { cylinder { 0.002 * y, 0.06 * y, 0.36 } cylinder { 0.01 * y, 0.1 * y, 0.352 } texture { GalvanizedTexture } }
// jacket with its domed lid and seams
union {
  cylinder { 0.10 * y, 1.42 * y, TankRadius }
  sphere { 0, TankRadius scale <1, 0.16, 1> translate y * 1.42 }
  torus { TankRadius, 0.007 translate y * 1.41 }
  torus { TankRadius, 0.007 translate y * 0.13 }
  torus { TankRadius, 0.005 translate y * 0.47 }
  texture { Jacket }
}
#for (Leg, 0, 2) cylinder { <0, 0, -0.22>, <0, 0.11, -0.22>, 0.025 rotate y * (60 + Leg * 120) pigment { rgb 0.1 } } #end

// burner door and gas control, turned a little from the viewer
union {
  object { Round_Box_Union(<-0.11, 0.17, -TankRadius - 0.012>, <0.11, 0.38, -TankRadius + 0.1>, 0.008) texture { Jacket } }
  #for (Slot, 0, 3) box { <-0.08, 0.20 + Slot * 0.025, -TankRadius - 0.014>, <0.08, 0.21 + Slot * 0.025, -TankRadius> pigment { rgb 0.03 } } #end
  object { Round_Box_Union(<-0.055, 0.50, -TankRadius - 0.075>, <0.055, 0.62, -TankRadius + 0.02>, 0.008) pigment { rgb <0.10, 0.11, 0.12> } finish { specular 0.3 } }
  cylinder { <0, 0.56, -TankRadius - 0.105>, <0, 0.56, -TankRadius - 0.07>, 0.036 pigment { rgb <0.62, 0.05, 0.03> } finish { specular 0.4 } }
  box { <-0.004, 0.565, -TankRadius - 0.107>, <0.004, 0.594, -TankRadius - 0.1> pigment { rgb 0.9 } }
  cylinder { <-0.02, 0.50, -TankRadius - 0.04>, <-0.02, 0.36, -TankRadius - 0.03>, 0.006 texture { CopperTexture } }
  // rating labels
  #local Sheet = difference { cylinder { 0.80 * y, 1.15 * y, TankRadius + 0.0022 } box { <-1, 0, -0.20>, <1, 2, 1> } };
  object { Sheet pigment { rgb <0.80, 0.66, 0.06> } }
  #local Inner = difference { cylinder { 0.82 * y, 1.06 * y, TankRadius + 0.003 } box { <-1, 0, -0.215>, <1, 2, 1> } };
  object { Inner pigment { rgb <0.78, 0.78, 0.72> } }
  object { CentredLettering("ENERGY USE", 0.036) translate <0, 1.093, -TankRadius - 0.005> pigment { rgb 0.02 } no_shadow }
  object { CentredLettering("$ 264", 0.075) translate <0, 0.965, -TankRadius - 0.005> pigment { rgb 0.02 } no_shadow }
  #for (Line, 0, 4) box { <-0.09, 0.84 + Line * 0.022, -TankRadius - 0.006>, <0.03 + rand(Chance) * 0.05, 0.848 + Line * 0.022, -TankRadius - 0.005> pigment { rgb 0.15 } no_shadow } #end
  rotate -y * 4
}

// drain valve with hose thread
union {
  cylinder { <0, 0, 0>, <0, 0, -0.08>, 0.014 }
  cylinder { <0, 0, -0.06>, <0, -0.03, -0.08>, 0.014 }
  torus { 0.025, 0.006 rotate x * 90 translate -z * 0.09 }
  translate <0.17, 0.43, -0.20> texture { BrassTexture }
}

// draft hood and vent connector
union {
  cone { <0, 1.53, 0>, 0.13, <0, 1.60, 0>, 0.055 }
  #for (Foot, 0, 3) box { <-0.01, 1.45, -0.12>, <0.01, 1.54, -0.11> rotate y * (45 + Foot * 90) } #end
  cylinder { <0, 1.58, 0>, <0, 1.86, 0>, 0.055 }
  torus { 0.056, 0.005 translate y * 1.72 }
  sphere { <0, 1.86, 0>, 0.057 }
  cylinder { <0, 1.86, 0>, <-1.8, 2.12, 0.1>, 0.055 }
  #for (Seam, 1, 3) torus { 0.056, 0.005 rotate z * 82 translate <-0.55 * Seam, 1.86 + 0.0795 * Seam, 0.03 * Seam> } #end
  texture { GalvanizedTexture }
}

// water lines: cold with a shut-off on the right, hot on the left
#declare Cold = array[4] { <0.13, 1.44, 0>, <0.13, 2.05, 0>, <0.13, 2.05, 0.5>, <1.9, 2.05, 0.5> }
#declare Hot = array[4] { <-0.14, 1.44, 0.05>, <-0.14, 2.20, 0.05>, <-0.14, 2.20, 0.6>, <1.9, 2.20, 0.6> }
object { PipeRun(Cold, 0.014) texture { CopperTexture } }
object { PipeRun(Hot, 0.014) texture { CopperTexture } }
union {
  cylinder { <0.13, 1.70, 0>, <0.13, 1.78, 0>, 0.022 texture { BrassTexture } }
  cylinder { <0.13, 1.74, 0>, <0.13, 1.74, -0.05>, 0.009 texture { BrassTexture } }
  object { Round_Box_Union(<0.115, 1.73, -0.062>, <0.145, 1.86, -0.05>, 0.005) pigment { rgb <0.05, 0.12, 0.5> } finish { specular 0.3 } }
}
#for (Nut, 0, 1) object { HexNut(0.026, 0.035) translate <0.13 - 0.27 * Nut, 1.47, 0.05 * Nut> texture { BrassTexture } } #end

// temperature and pressure relief valve
union {
  cylinder { <TankRadius - 0.02, 0, 0>, <TankRadius + 0.05, 0, 0>, 0.018 }
  object { HexNut(0.026, 0.02) rotate z * 90 translate x * (TankRadius + 0.03) }
  cylinder { <TankRadius + 0.06, -0.05, 0>, <TankRadius + 0.06, 0.05, 0>, 0.026 }
  cylinder { <TankRadius + 0.06, 0.05, 0>, <TankRadius + 0.06, 0.075, 0>, 0.014 }
  texture { BrassTexture }
  translate y * 1.28 rotate y * 40
}
union {  // test lever and its tag
  box { <-0.05, 0.072, -0.010>, <0.055, 0.077, 0.010> rotate z * 18 texture { ChromeTexture } }
  box { <0.02, 0.0, -0.03>, <0.022, 0.07, 0.02> translate x * 0.025 pigment { rgb <0.7, 0.05, 0.04> } }
  translate <TankRadius + 0.06, 1.28, 0> rotate y * 40
}
#declare Discharge = array[2] { <TankRadius + 0.06, 1.24, 0>, <TankRadius + 0.06, 0.16, 0> }
object { PipeRun(Discharge, 0.014) rotate y * 40 texture { CopperTexture } }
// stain under the valve
difference {
  cylinder { 0.5 * y, 1.27 * y, TankRadius + 0.001 }
  box { <-1, 0, -1>, <0.15, 2, 1> }
  pigment { bozo turbulence 0.6 color_map { [0 rgbt <0.30, 0.13, 0.05, 0.3>] [0.35 rgbt <0.35, 0.16, 0.06, 0.75>] [0.5 rgbt 1] } scale <0.05, 0.9, 0.05> }
  rotate y * 40
}

// gas line with drip leg and yellow valve
#declare GasLine = array[4] { <-0.62, 2.3, 0.3>, <-0.62, 0.56, 0.0>, <-0.30, 0.56, -0.30>, <-0.05, 0.56, -0.30> }
object { PipeRun(GasLine, 0.014) pigment { rgb <0.04, 0.04, 0.045> } finish { specular 0.3 } }
cylinder { <-0.62, 0.56, 0>, <-0.62, 0.36, 0>, 0.014 pigment { rgb 0.04 } }
cylinder { <-0.62, 0.35, 0>, <-0.62, 0.39, 0>, 0.019 pigment { rgb 0.05 } }
object { Round_Box_Union(<-0.66, 1.05, 0.02>, <-0.52, 1.075, 0.04>, 0.005) pigment { rgb <0.75, 0.55, 0.03> } }
cylinder { <-0.62, 1.02, 0.085>, <-0.62, 1.10, 0.098>, 0.022 texture { BrassTexture } }
