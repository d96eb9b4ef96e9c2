<?xml version="1.0" encoding="UTF-8"?>
<!-- The look of a report. An empty REPORT gives the frame with a mark for the rows; RECORDS give rows. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
  <xsl:output method="html" encoding="UTF-8" indent="no"/>

  <xsl:template match="/REPORT">
    <html>
      <head>
        <meta charset="UTF-8"/>
        <meta name="viewport" content="width=device-width, initial-scale=1"/>
        <title><xsl:value-of select="@TITLE"/></title>
        <style>
          :root { color-scheme: light dark; --line: #d5d9e0; --soft: #f4f6f9; --ink: #1d2430; --faint: #68717f; --paper: #fff; --declared: #3f74ad; --used: #d97c1e; }
          @media (prefers-color-scheme: dark) { :root { --line: #363d49; --soft: #232933; --ink: #e4e8ee; --faint: #98a2b1; --paper: #181c23; --declared: #6ea3dc; --used: #eb9a45; } }
          body { font: 14px/1.45 system-ui, sans-serif; color: var(--ink); background: var(--paper); margin: 2rem auto; max-width: 78rem; padding: 0 1rem; }
          h1 { font-size: 1.5rem; margin: 0 0 .2rem; } .when { color: var(--faint); margin: 0 0 1.2rem; }
          .wide { overflow-x: auto; } table { border-collapse: collapse; width: 100%; }
          th { text-align: left; position: sticky; top: 0; background: var(--soft); } th, td { padding: .3rem .6rem; border-bottom: 1px solid var(--line); vertical-align: top; }
          td { font-variant-numeric: tabular-nums; } tr:hover td { background: var(--soft); }
          .number { text-align: right; } tfoot td { font-weight: 600; } h2 { font-size: 1.1rem; margin: 1.6rem 0 .4rem; } table.summary { width: auto; }
          .picture { overflow-x: auto; margin: 0 0 1.4rem; } svg { display: block; width: 100%; min-width: 40rem; max-width: 70rem; height: auto; }
          svg text { font-size: 12px; fill: var(--faint); } svg .name { font-family: ui-monospace, monospace; fill: var(--ink); } svg .figure { fill: var(--ink); font-variant-numeric: tabular-nums; }
          svg .name, svg .figure, svg .end { text-anchor: end; } svg .middle { text-anchor: middle; } svg .over { font-weight: 700; }
          svg .grid { stroke: var(--line); fill: none; } svg .declared { fill: var(--declared); } svg .used { fill: var(--used); } svg .declared-line { stroke: var(--declared); stroke-width: 1.2; fill: none; }
          td.Dataname { font-family: ui-monospace, monospace; white-space: nowrap; } td.File { font-family: ui-monospace, monospace; color: var(--faint); white-space: nowrap; }
        </style>
      </head>
      <body>
        <h1><xsl:value-of select="@TITLE"/></h1>
        <p class="when"><xsl:value-of select="@TIME"/></p>
        <xsl:apply-templates select="PICTURE"/>
        <xsl:apply-templates select="SUMMARY"/>
        <div class="wide">
          <table>
            <thead><tr><xsl:for-each select="COLUMN"><th><xsl:apply-templates select="@KIND"/><xsl:value-of select="@CAPTION"/></th></xsl:for-each></tr></thead>
            <tbody><xsl:comment>rows</xsl:comment></tbody>
            <xsl:if test="TOTAL"><tfoot><tr><xsl:apply-templates select="TOTAL/CELL"/></tr></tfoot></xsl:if>
          </table>
        </div>
      </body>
    </html>
  </xsl:template>

  <xsl:template match="@KIND"><xsl:if test=". = 'number'"><xsl:attribute name="class">number</xsl:attribute></xsl:if></xsl:template>
  <xsl:template match="CELL"><td><xsl:apply-templates select="@KIND"/><xsl:value-of select="."/></td></xsl:template>
  <xsl:template match="PICTURE"><div class="picture"><xsl:copy-of select="*"/></div></xsl:template>
  <xsl:template match="SUMMARY">
    <h2><xsl:value-of select="@CAPTION"/></h2>
    <div class="wide">
      <table class="summary">
        <thead><tr><xsl:for-each select="HEADS/CELL"><th><xsl:apply-templates select="@KIND"/><xsl:value-of select="."/></th></xsl:for-each></tr></thead>
        <tbody><xsl:for-each select="ROW"><tr><xsl:apply-templates select="CELL"/></tr></xsl:for-each></tbody>
      </table>
    </div>
    <h2><xsl:value-of select="/REPORT/COLUMN[1]/@CAPTION"/></h2>
  </xsl:template>

  <xsl:template match="/RECORDS"><xsl:apply-templates select="RECORD"/></xsl:template>
  <xsl:template match="RECORD">
    <tr><xsl:for-each select="*"><td class="{normalize-space(concat(local-name(), ' ', @KIND))}"><xsl:apply-templates select="." mode="value"/></td></xsl:for-each></tr>
  </xsl:template>
  <xsl:template match="*[@RAW='no']" mode="value"><xsl:value-of select="." disable-output-escaping="yes"/></xsl:template>
  <xsl:template match="*" mode="value"><xsl:value-of select="."/></xsl:template>
</xsl:stylesheet>
