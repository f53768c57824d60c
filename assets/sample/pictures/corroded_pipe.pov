// Cabinet under a sink: the trap's joint is green and rusty, and it drips.
#version 3.7;
#declare BouncedLight = 0;
#include "snapshot.inc"
#include "materials.inc"

#declare Chance = seed(107);

FocusedSnapshot(<0.14, 0.42, -0.92>, <0.02, 0.27, 0.1>, 46, 4, <0.02, 0.34, 0.1>, 0.010)
Torch(<0.32, 0.60, -1.0>, <0.0, 0.32, 0.1>, rgb <1.7, 1.62, 1.45>, 1.1)
light_source { <-0.3, 0.6, -1.6> rgb <0.30, 0.31, 0.35> }

// cabinet box: floor, sides, back and front frame
#declare Melamine = texture { pigment { rgb <0.66, 0.60, 0.50> } finish { diffuse 0.75 specular 0.15 roughness 0.05 } }
box { <-0.6, -0.03, -0.3>, <0.6, 0, 0.6> texture { LumberTexture(<0.60, 0.46, 0.30>) scale 2 rotate y * 90 } }
box { <-0.6, 0, 0.38>, <0.6, 0.9, 0.42> texture { Melamine } }
box { <-0.50, 0, -0.3>, <-0.48, 0.9, 0.6> texture { LumberTexture(<0.60, 0.46, 0.30>) scale 2 rotate x * 90 } }
box { <0.52, 0, -0.3>, <0.54, 0.9, 0.6> texture { LumberTexture(<0.60, 0.46, 0.30>) scale 2 rotate x * 90 } }
box { <-0.9, 0.68, -0.33>, <0.9, 1.2, -0.30> texture { LumberTexture(<0.5, 0.33, 0.18>) rotate y * 90 } }
box { <-0.9, -0.2, -0.33>, <0.9, -0.01, -0.30> texture { LumberTexture(<0.5, 0.33, 0.18>) rotate y * 90 } }

// underside of a steel sink and its strainer
superellipsoid { <0.3, 0.3> scale <0.40, 0.22, 0.26> translate <0, 0.78, 0.1>
  texture { pigment { rgb <0.38, 0.39, 0.40> } normal { bumps 0.05 scale 0.02 } finish { diffuse 0.5 specular 0.5 roughness 0.05 reflection 0.1 } }
}
union {
  cylinder { <0, 0.50, 0.1>, <0, 0.565, 0.1>, 0.055 }
  cylinder { <0, 0.52, 0.1>, <0, 0.535, 0.1>, 0.066 }
  object { HexNut(0.062, 0.025) translate <0, 0.49, 0.1> }
  texture { ChromeTexture normal { bumps 0.1 scale 0.02 } }
}

// trap: down from the sink, round the U and back into the wall
#declare TrapTube = texture {
  pigment { granite color_map { [0 rgb <0.30, 0.24, 0.18>] [0.35 rgb <0.52, 0.50, 0.46>] [1 rgb <0.62, 0.61, 0.58>] } scale 0.12 }
  normal { bumps 0.08 scale 0.03 }
  finish { diffuse 0.5 specular 0.7 roughness 0.02 metallic reflection { 0.22 metallic } }
}
#declare TubeRadius = 0.021;
#declare UBend = 0.065;
union {
  cylinder { <0, 0.24, 0.1>, <0, 0.50, 0.1>, TubeRadius }
  intersection { torus { UBend, TubeRadius rotate x * 90 } box { <-1, -1, -1>, <1, 0, 1> } translate <UBend, 0.24, 0.1> }
  cylinder { <2 * UBend, 0.24, 0.1>, <2 * UBend, 0.30, 0.1>, TubeRadius }
  // upper elbow into the wall
  intersection { torus { 0.06, TubeRadius rotate z * 90 } box { <-1, 0, -1>, <1, 1, 0> } translate <2 * UBend, 0.30, 0.16> }
  cylinder { <2 * UBend, 0.36, 0.16>, <2 * UBend, 0.36, 0.4>, TubeRadius }
  texture { TrapTube }
}
cylinder { <2 * UBend, 0.36, 0.365>, <2 * UBend, 0.36, 0.38>, 0.05 texture { ChromeTexture } }
// sound slip nut at the outlet
union {
  object { HexNut(0.034, 0.024) translate <2 * UBend, 0.275, 0.1> }
  torus { 0.026, 0.006 translate <2 * UBend, 0.30, 0.1> }
  texture { TrapTube }
}

// the bad joint: slip nut eaten away under a crust
#declare JointAt = <0, 0.27, 0.1>;
object { HexNut(0.038, 0.032) rotate y * 15 translate JointAt - y * 0.012 texture { RustTexture } }
#for (Crust, 0, 900)
  #local Around = rand(Chance) * 360;
  #local Height = Jitter(Chance, 1);
  sphere { 0, 0.0015 + rand(Chance) * 0.004 * (1.1 - abs(Height))
    scale <1, 0.6 + rand(Chance) * 0.7, 1>
    translate vrotate(<0.0205 + 0.012 * (abs(Height) < 0.35), Height * 0.042, 0>, y * Around) + JointAt
    #if (rand(Chance) < 0.62) texture { VerdigrisTexture } #else texture { RustTexture } #end }
#end
// streaks down the bend
difference {
  torus { UBend, TubeRadius + 0.0006 rotate x * 90 translate <UBend, 0.24, 0.1> }
  box { <-1, 0.245, -1>, <1, 1, 1> }
  box { <0.11, -1, -1>, <1, 1, 1> }
  pigment { granite turbulence 0.4 color_map { [0 rgbt <0.10, 0.05, 0.02, 0>] [0.3 rgbt <0.36, 0.16, 0.05, 0.1>] [0.5 rgbt <0.2, 0.5, 0.4, 0.3>] [0.62 rgbt 1] } scale <0.03, 0.12, 0.03> }
}

// drop about to fall, one falling, and the puddle
#declare DropTexture = texture {
  pigment { rgbf <0.92, 0.95, 0.97, 0.9> }
  finish { diffuse 0.05 specular 1 roughness 0.003 reflection { 0.05, 0.6 fresnel on } conserve_energy }
}
#macro Drop(Size)
  union {
    sphere { 0, Size }
    cone { <0, Size * 0.5, 0>, Size * 0.86, <0, Size * 2.4, 0>, Size * 0.12 }
    texture { DropTexture } interior { ior 1.33 }
  }
#end
#declare BendBottom = 0.24 - UBend - TubeRadius;
object { Drop(0.0075) translate <UBend - 0.015, BendBottom - 0.014, 0.098> }
object { Drop(0.0065) translate <UBend - 0.015, 0.080, 0.098> }
object { Drop(0.007) translate <-0.034, 0.236, 0.085> }
#declare PuddleTexture = texture {
  pigment { rgbf <0.75, 0.72, 0.66, 0.75> }
  normal { ripples 0.25 frequency 26 translate <0.05, 0, 0.1> }
  finish { diffuse 0.1 specular 1 roughness 0.004 reflection { 0.12, 0.9 fresnel on } conserve_energy }
}
blob {
  threshold 0.5
  #for (Part, 0, 13)
    sphere { <0.05 + Jitter(Chance, 0.15), 0, 0.05 + Jitter(Chance, 0.10)>, 0.11 + rand(Chance) * 0.05, 0.8 }
  #end
  scale <1, 0.04, 1> texture { PuddleTexture } interior { ior 1.33 }
}
// swollen, dark boards round it
disc { <0.05, 0.0006, 0.05>, y, 0.42
  pigment { spherical turbulence 0.3 color_map { [0 rgbt <0.15, 0.08, 0.03, 1>] [0.25 rgbt <0.12, 0.07, 0.03, 0.6>] [1 rgbt <0.06, 0.035, 0.02, 0.25>] } scale 0.42 translate <0.05, 0, 0.05> } }

// supply stops with braided hoses at the back wall
#for (Supply, 0, 1)
  #local At = <-0.28 + Supply * 0.12, 0.30, 0.33>;
  union {
    cylinder { At, At + z * 0.06, 0.009 texture { ChromeTexture } }
    cylinder { At + z * 0.045, At + z * 0.052, 0.03 texture { ChromeTexture } }
    sphere { At, 0.015 texture { ChromeTexture } }
    cylinder { At - z * 0.035, At, 0.006 texture { ChromeTexture } }
    sphere { 0, 0.022 scale <1, 0.55, 0.4> translate At - z * 0.04 pigment { rgb (Supply = 0 ? <0.55, 0.04, 0.03> : <0.04, 0.10, 0.5>) } finish { specular 0.5 } }
    cylinder { At, At + y * 0.5, 0.008
      pigment { checker rgb <0.35, 0.36, 0.37>, rgb <0.55, 0.56, 0.57> scale 0.004 } finish { specular 0.6 metallic } }
  }
#end

// things people keep down there
union {   // spray bottle
  cylinder { 0, y * 0.16, 0.042 pigment { rgb <0.05, 0.28, 0.55> } }
  cone { y * 0.16, 0.042, y * 0.20, 0.016 pigment { rgb <0.05, 0.28, 0.55> } }
  cylinder { y * 0.20, y * 0.225, 0.018 pigment { rgb 0.8 } }
  object { Round_Box_Union(<-0.055, 0.225, -0.014>, <0.03, 0.255, 0.014>, 0.006) pigment { rgb <0.75, 0.08, 0.05> } }
  box { <-0.040, 0.185, -0.005>, <-0.032, 0.23, 0.005> rotate -z * 8 pigment { rgb <0.75, 0.08, 0.05> } }
  difference { cylinder { y * 0.04, y * 0.13, 0.0425 } box { <-1, -1, 0>, 1 } pigment { rgb <0.8, 0.8, 0.75> } }
  finish { specular 0.3 }
  translate <0.34, 0, 0.22>
}
union {   // jug of cleaner
  object { Round_Box_Union(<-0.06, 0, -0.045>, <0.06, 0.19, 0.045>, 0.02) }
  cone { y * 0.18, 0.04, y * 0.23, 0.02 }
  pigment { rgb <0.72, 0.62, 0.10> } finish { specular 0.3 }
  translate <-0.37, 0, 0.16> 
}
object { Round_Box_Union(<0.40, 0, 0.02>, <0.49, 0.05, 0.13>, 0.01) pigment { granite color_map { [0 rgb <0.3, 0.35, 0.05>] [1 rgb <0.7, 0.65, 0.1>] } scale 0.02 } }
