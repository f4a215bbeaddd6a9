package com.korvane.ledger;
public class InterimStatement extends Account.Statement {
    @Override public void print() {
        System.out.println("INTERIM STATEMENT");
        super.[>print]();  //@ calls Statement.print
    }
}
